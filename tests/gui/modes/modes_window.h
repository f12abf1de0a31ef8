// The Modes / Frequencies tab in the whole launcher, found by what its widgets say.
#pragma once

#include <string>

#include "base/file_write.h"
#include "gui/station_fixture.h"

namespace testing_gui {

class ModesWindow : public StationTest {
 protected:
  GtkWidget* box(const std::string& kind, const std::string& band, const std::string& name) {
    const auto found = find_all(window(), [&](GtkWidget* widget) {
      const auto* its_kind = static_cast<const char*>(g_object_get_data(G_OBJECT(widget), "mt-kind"));
      const auto* its_band = static_cast<const char*>(g_object_get_data(G_OBJECT(widget), "mt-band"));
      const char* its_name = its_kind ? atk_object_get_name(gtk_widget_get_accessible(widget)) : nullptr;
      return its_kind && kind == its_kind && (its_band ? its_band : "") == band && its_name && name == its_name;
    });
    return found.empty() ? nullptr : found.front();
  }
  GtkWidget* chart() {
    const auto found = find_all(window(), [](GtkWidget* widget) {
      const char* name = atk_object_get_name(gtk_widget_get_accessible(widget));
      return GTK_IS_DRAWING_AREA(widget) && name && std::string(name) == "Receiver coverage";
    });
    return found.empty() ? nullptr : found.front();
  }
  std::string chart_says() { return atk_object_get_description(gtk_widget_get_accessible(chart())); }
  static std::string tip(GtkWidget* widget) {
    return static_cast<const char*>(g_object_get_data(G_OBJECT(widget), "mt-tip"));
  }

  /// A1 is ticked and B2 is not, unless `settings` says so.
  std::string station(const std::string& settings, const std::string& bands) {
    std::string text = "gui-format = multi-receiver-v1\nmodes = FT8\nbands = " + bands +
                       "\nreceiver.A1.model = RSPdx\nreceiver.B2.model = RSP1A\nall-txt = " + directory_ +
                       "/ALL.TXT\nreceiver.A1.enabled = true\n" + settings;
    for (const char* key : {"mode", "receiver.B2.enabled"})
      if (("\n" + settings).find("\n" + std::string(key) + " = ") == std::string::npos)
        text += std::string(key) + (std::string(key) == "mode" ? " = decoder\n" : " = false\n");
    return write("station.conf", text);
  }
  /// The saved session; empty before the first save.
  std::string session() {
    try {
      return base::read_file(setup_.config_directory + "/session.conf");
    } catch (const std::exception&) {
      return {};
    }
  }
  /// Whether the saved session says something of a key.
  bool saved(const std::string& key) { return session().find(key) != std::string::npos; }
};

}  // namespace testing_gui
