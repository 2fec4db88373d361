// SPDX-License-Identifier: MIT
// The parts of the screen that keep what the windows show and bring it back.

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include "app/desktop_screen.h"
#include "app/latest_result.h"
#include "app/widgets.h"
#include "grids/announcer.h"

namespace qmx {
namespace {

/// What one control of the main window shows.
struct ControlState {
  QObject* control;
  QString text;
  bool enabled;
  bool checked;
  bool visible;
};

/// What one window of a matrix shows, and where it stands.
struct WindowPicture {
  GridModel::Contents grid;
  QRect geometry;
  bool shown;
};

struct ScreenState : ViewState {
  std::vector<ControlState> controls;
  std::array<std::optional<WindowPicture>, kSlotCount> windows;
  std::array<bool, kSlotCount> wide{};
  bool resultsShown = false;
  int lines = 0;
  QList<Slot> latest;
};

struct GridState : ViewState {
  GridModel::Contents grid;
  bool wide = false;
};

ControlState StateOf(QObject* control) {
  ControlState state{control, {}, true, false, true};
  if (!control->isWidgetType()) {
    if (const auto* action = qobject_cast<QAction*>(control)) state.enabled = action->isEnabled();
    return state;
  }
  const auto* widget = static_cast<QWidget*>(control);
  state.enabled = widget->isEnabledTo(widget->parentWidget());
  state.visible = !widget->isHidden();
  if (const auto* label = qobject_cast<QLabel*>(control)) {
    state.text = label->text();
  } else if (const auto* button = qobject_cast<QAbstractButton*>(control)) {
    state.checked = button->isChecked();
  } else if (const auto* field = qobject_cast<QLineEdit*>(control)) {
    state.text = field->text();
  }
  return state;
}

void Restore(const ControlState& state) {
  // Only what the user types and clicks has consequences.
  const QSignalBlocker quiet(state.control);
  if (auto* field = qobject_cast<QLineEdit*>(state.control)) field->setText(state.text);
  if (auto* label = qobject_cast<QLabel*>(state.control)) SetLabelText(label, state.text);
  auto* button = qobject_cast<QAbstractButton*>(state.control);
  if (button != nullptr && button->isCheckable()) {
    // An option is deselected by the one that is selected.
    if (state.checked || !button->autoExclusive()) button->setChecked(state.checked);
  }
}

}  // namespace

std::shared_ptr<const ViewState> DesktopScreen::Capture() const {
  auto state = std::make_shared<ScreenState>();
  for (QObject* control : main_.CommandControls()) state->controls.push_back(StateOf(control));
  for (const Slot slot : kAllSlots) {
    const GridWindow* window = Window(slot);
    if (window == nullptr) continue;
    state->windows[slot] = {window->Grid().Model().Capture(), window->geometry(),
                            window->isVisible()};
  }
  state->wide = wide_;
  state->latest = latest_;
  state->resultsShown = results_ != nullptr && results_->isVisible();
  state->lines = results_ == nullptr ? 0 : results_->LineCount();
  return state;
}

void DesktopScreen::Restore(const ViewState& state, Restoring restoring) {
  const auto& wanted = static_cast<const ScreenState&>(state);
  for (const ControlState& control : wanted.controls) {
    qmx::Restore(control);
    SetObjectEnabled(control.control, control.enabled);
    if (auto* widget = qobject_cast<QWidget*>(control.control)) widget->setVisible(control.visible);
  }
  wide_ = wanted.wide;
  latest_ = wanted.latest;
  publishedNow_ = 0;
  for (const Slot slot : kAllSlots) {
    const auto& picture = wanted.windows[slot];
    if (!picture) {
      CloseWindow(slot);
      continue;
    }
    const bool isNew = windows_[slot] == nullptr;
    GridWindow& window = Ensure(slot);
    window.Restore(picture->grid, wide_[slot]);
    if (isNew) {
      window.setGeometry(picture->geometry);
      memory_.Watch(window);
    }
    if (!isNew && restoring == Restoring::kContents) continue;
    window.setAttribute(Qt::WA_ShowWithoutActivating);
    window.setVisible(picture->shown);
  }
  if (restoring == Restoring::kContents || results_ == nullptr) return;
  results_->CutTo(wanted.lines);
  results_->setVisible(wanted.resultsShown);
}

std::shared_ptr<const ViewState> DesktopScreen::CaptureGrid(Slot slot) const {
  auto state = std::make_shared<GridState>();
  if (const GridWindow* window = Window(slot)) state->grid = window->Grid().Model().Capture();
  state->wide = wide_[slot];
  return state;
}

void DesktopScreen::RestoreGrid(Slot slot, const ViewState& state) {
  const auto& wanted = static_cast<const GridState&>(state);
  wide_[slot] = wanted.wide;
  Ensure(slot).Restore(wanted.grid, wanted.wide);
}

std::optional<std::string> DesktopScreen::WrittenText(Slot slot, int row, int col) const {
  const GridWindow* window = Window(slot);
  if (window == nullptr) return std::nullopt;
  const std::optional<QString> text = window->Grid().Model().WrittenText(row, col);
  return text ? std::optional(text->toStdString()) : std::nullopt;
}

void DesktopScreen::RestoreText(Slot slot, int row, int col,
                                const std::optional<std::string>& text) {
  GridWindow& window = Ensure(slot);
  window.HideEntryBox();
  window.Grid().RestoreText(row, col,
                            text ? std::optional(QString::fromStdString(*text)) : std::nullopt);
}

void DesktopScreen::ShowElements(Slot slot, const Matrix& elements) {
  Ensure(slot).Grid().ShowElements(elements);
}

void DesktopScreen::SetStatus(const std::string& text) {
  main_.SetStatus(QString::fromStdString(text));
  if (!text.empty()) Announce(FrontWindow(), QString::fromStdString(text));
}

void DesktopScreen::ForgetLatest(Slot slot) {
  const qsizetype place = latest_.indexOf(slot);
  if (place < 0) return;
  latest_.removeAt(place);
  if (place < publishedNow_) --publishedNow_;
}

void DesktopScreen::ShowLatest() {
  publishedNow_ = 0;
  const bool isThere = !latest_.isEmpty() && Window(latest_.front()) != nullptr;
  const Slot slot = isThere ? latest_.front() : kSlotA;
  main_.Latest()->Show(isThere ? Window(slot) : nullptr, wide_[slot]);
}

}  // namespace qmx
