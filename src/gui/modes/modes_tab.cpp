#include "gui/modes/modes_tab.h"

#include <cstdlib>

#include "gui/kit/widgets.h"
#include "gui/modes/decoder_programs.h"
#include "launcher/planner.h"

namespace modes_gui {
namespace {

/// Up to here the planner answers within a frame or two.
constexpr std::size_t most_receivers_at_once = 4;

std::string search_path() {
  const char* path = std::getenv("PATH");
  return path ? path : "";
}

}  // namespace

ModesTab::ModesTab(ModesSurroundings surroundings) : around_(std::move(surroundings)) {
  GtkWidget* content = nullptr;
  page_ = kit::scrolled_page(content);
  ModeTable::Actions actions;
  actions.changed = [this](const ModeGrid& grid) { take_grid(grid); };
  actions.pinned = [this](std::size_t band, const std::string& serial) { pin(band, serial); };
  actions.coverage.dropped = [this](const Drag::Drop& drop) { move(drop); };
  actions.coverage.taken = [this] { set_note(""); };
  table_ = std::make_unique<ModeTable>(std::move(actions));
  fax_ = std::make_unique<FaxView>([this](const FaxIds& ticked) {
    ModeGrid grid = grid_;
    grid.fax = ticked;
    take_grid(grid);
  });
  GtkWidget* card = kit::card("BANDS AND MODES");
  kit::add(card, table_->widget());
  build_notice(card);
  kit::add(content, card);
  kit::add(content, fax_->widget());
}

void ModesTab::build_notice(GtkWidget* card) {
  note_ = kit::line_label("", {"warning"});
  gtk_label_set_xalign(GTK_LABEL(note_), 1);
  kit::set_accessible(note_, "", "Note of the receiver chart");
  kit::add(card, note_);
  GtkWidget* row = kit::horizontal_box(12);
  notice_ = kit::label("", {"muted"});
  kit::add(row, notice_, true);
  fix_button_ = kit::button("", [this] { press_fix(); });
  gtk_widget_set_valign(fix_button_, GTK_ALIGN_START);
  gtk_widget_set_no_show_all(fix_button_, TRUE);
  gtk_widget_hide(fix_button_);
  kit::add(row, fix_button_);
  kit::add(card, row);
}

void ModesTab::show() {
  options::Station station = around_.station();
  ReceiverStates receivers = around_.receivers();
  if (shown_ && station == station_ && receivers == receivers_) return;
  const bool replanned = !shown_ || !(station == station_);
  station_ = std::move(station);
  receivers_ = std::move(receivers);
  shown_ = true;
  if (replanned) choose();
  render();
}

void ModesTab::activate() {
  if (shown_) render();
}

void ModesTab::choose() {
  if (station_.receivers.size() > most_receivers_at_once) return choose_in_background();
  choices_ = launcher::band_choices(station_);
  chosen_for_ = station_;
}

// One job at a time; when it comes back to a station that has changed meanwhile, it is asked again for the newest.
void ModesTab::choose_in_background() {
  if (choosing_) return;
  choosing_ = true;
  base::run_in_background(
      alive_.watch(), [station = station_] { return std::pair(station, launcher::band_choices(station)); },
      [this](base::Outcome<std::pair<options::Station, launcher::BandChoices>> outcome) {
        choosing_ = false;
        if (!outcome.value || !(outcome.value->first == station_)) {
          if (!(chosen_for_ == station_)) choose();
          return render();
        }
        chosen_for_ = std::move(outcome.value->first);
        choices_ = std::move(outcome.value->second);
        render();
      });
}

void ModesTab::render() {
  const bool fresh = chosen_for_ == station_;
  TableView view = table_view(station_, choices_, fresh, missing_programs(station_.common, search_path()));
  if (view.grid == grid_) view.grid.came_by_box = grid_.came_by_box;
  grid_ = view.grid;
  table_->show(view);
  fax_->show(view.grid.fax, station_.common.contains("known-band-modes"));
  notice_shown_ = notice_of(station_, choices_, fresh, receivers_);
  kit::set_text(notice_, notice_shown_.text);
  kit::set_class(notice_, "error", notice_shown_.error);
  kit::set_class(notice_, "muted", !notice_shown_.error);
  kit::set_visible(fix_button_, notice_shown_.fix.has_value());
  if (notice_shown_.fix) kit::set_button_text(fix_button_, notice_shown_.fix->label);
}

void ModesTab::change(const options::Station& changed) {
  if (!(changed == station_)) around_.change(changed);
  // A box that was pressed in vain goes back.
  show();
  render();
}

void ModesTab::take_grid(const ModeGrid& grid) {
  set_note("");
  grid_ = grid;
  options::Station changed = station_;
  changed.common = write_grid(grid, station_.common);
  change(changed);
}

void ModesTab::pin(std::size_t band, const std::string& serial) {
  set_note("");
  options::Station changed = station_;
  const std::string name(launcher::band_presets[band].name);
  if (serial.empty())
    changed.assignments.erase(name);
  else
    changed.assignments[name] = serial;
  change(changed);
}

void ModesTab::move(const Drag::Drop& drop) {
  const Move move = move_receiver(station_, choices_, drop, launcher::can_be_planned);
  set_note(move.note);
  if (!move.pins) return;
  options::Station changed = station_;
  changed.assignments = *move.pins;
  change(changed);
}

void ModesTab::press_fix() {
  if (!notice_shown_.fix) return;
  const launcher::PlanFix fix = *notice_shown_.fix;
  set_note("");
  if (fix.kind == launcher::PlanFix::Kind::open_sdr_config) return around_.open_sdr_config();
  if (fix.kind == launcher::PlanFix::Kind::open_audio_receivers) return around_.open_audio_receivers();
  change(launcher::apply_fix(station_, fix));
}

void ModesTab::set_note(const std::string& note) {
  kit::set_text(note_, note);
}

}  // namespace modes_gui
