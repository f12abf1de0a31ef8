#include "gui/kit/dialogs.h"

#include <memory>

#include "base/gobject_ptr.h"
#include "base/text.h"

namespace kit {
namespace {

using Response = std::function<void(GtkDialog*, int)>;

// Shows the dialog and destroys it after its one answer.
void present(GtkWidget* dialog, Response response) {
  auto* answer = new Response(std::move(response));
  g_signal_connect_data(
      dialog, "response", G_CALLBACK((+[](GtkDialog* self, int id, gpointer data) {
        const auto call = *static_cast<Response*>(data);
        call(self, id);
        gtk_widget_destroy(GTK_WIDGET(self));
      })),
      answer, [](gpointer data, GClosure*) { delete static_cast<Response*>(data); }, GConnectFlags(0));
  gtk_widget_show(dialog);
}

GtkWidget* message_dialog(GtkWindow* parent, GtkMessageType type, GtkButtonsType buttons, const std::string& text) {
  return gtk_message_dialog_new(parent, GtkDialogFlags(GTK_DIALOG_MODAL | GTK_DIALOG_DESTROY_WITH_PARENT), type,
                                buttons, "%s", base::valid_utf8(text).c_str());
}

}  // namespace

void show_message(GtkWindow* parent, GtkMessageType type, const std::string& text) {
  present(message_dialog(parent, type, GTK_BUTTONS_CLOSE, text), [](GtkDialog*, int) {});
}

void ask(GtkWindow* parent, const std::string& text, std::function<void()> accepted, std::function<void()> declined) {
  GtkWidget* dialog = message_dialog(parent, GTK_MESSAGE_QUESTION, GTK_BUTTONS_OK_CANCEL, text);
  gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_CANCEL);
  present(dialog, [accepted = std::move(accepted), declined = std::move(declined)](GtkDialog* self, int id) {
    gtk_widget_hide(GTK_WIDGET(self));
    id == GTK_RESPONSE_OK ? accepted() : declined();
  });
}

void choose_file(GtkWindow* parent, const FileQuestion& question, std::function<void(std::string)> chosen) {
  GtkWidget* dialog = gtk_file_chooser_dialog_new(question.title, parent, GTK_FILE_CHOOSER_ACTION_OPEN, "Cancel",
                                                  GTK_RESPONSE_CANCEL, "Open", GTK_RESPONSE_ACCEPT, nullptr);
  gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
  GtkFileFilter* filter = gtk_file_filter_new();
  gtk_file_filter_set_name(filter, question.filter_name);
  gtk_file_filter_add_pattern(filter, question.pattern);
  gtk_file_chooser_add_filter(GTK_FILE_CHOOSER(dialog), filter);
  gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_ACCEPT);
  present(dialog, [chosen = std::move(chosen)](GtkDialog* self, int id) {
    const base::GStringPtr path(gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(self)));
    gtk_widget_hide(GTK_WIDGET(self));
    if (id == GTK_RESPONSE_ACCEPT && path) chosen(path.get());
  });
}

}  // namespace kit
