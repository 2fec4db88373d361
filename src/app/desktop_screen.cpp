// SPDX-License-Identifier: MIT
#include "app/desktop_screen.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QSignalBlocker>

#include "app/latest_result.h"
#include "app/widgets.h"
#include "commands/results_commands.h"
#include "grids/editor_window.h"
#include "grids/qt_text.h"
#include "grids/viewer_window.h"

namespace qmx {
namespace {

const QWidget* FrameAround(const QWidget& control) {
  const QWidget* frame = control.parentWidget();
  while (frame != nullptr && qobject_cast<const QGroupBox*>(frame) == nullptr) {
    frame = frame->parentWidget();
  }
  return frame;
}

/// Where the focus goes in a frame whose focused control was disabled: to Show, or else to the
/// first field. Left to itself it would go to the next control, which may be Clear, and another
/// Space would lose a matrix.
QWidget* HarmlessControl(const QWidget& frame) {
  for (QAbstractButton* button : frame.findChildren<QAbstractButton*>()) {
    if (button->isEnabled() && button->objectName().startsWith("cmdShow")) return button;
  }
  for (QLineEdit* field : frame.findChildren<QLineEdit*>()) {
    if (field->isEnabled()) return field;
  }
  return nullptr;
}

/// Shows a window, which may be minimised, in its normal state; a maximised one stays so.
void ShowOpen(QWidget& window) {
  if (window.isMinimized()) {
    // Taken off the screen first it comes back as a new window does, with the keyboard only where
    // it is to have it.
    window.hide();
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  }
  window.show();
  window.raise();
}

}  // namespace

DesktopScreen::DesktopScreen(frmQMX& mainWindow, CommandRunner& commands)
    : main_(mainWindow), commands_(commands), work_(mainWindow) {
  focusMover_.setSingleShot(true);
  QObject::connect(&focusMover_, &QTimer::timeout, &focusMover_, [this] { MoveFocus(); });
}

DesktopScreen::~DesktopScreen() = default;

std::string DesktopScreen::Text(const Control& control) const {
  QObject* found = main_.Find(control);
  if (const auto* field = qobject_cast<QLineEdit*>(found)) return field->text().toStdString();
  if (const auto* label = qobject_cast<QLabel*>(found)) return label->text().toStdString();
  return {};
}

void DesktopScreen::SetText(const Control& control, const std::string& text) {
  QObject* found = main_.Find(control);
  // Only what the user types has consequences.
  const QSignalBlocker quiet(found);
  if (auto* field = qobject_cast<QLineEdit*>(found)) field->setText(QString::fromStdString(text));
  if (auto* label = qobject_cast<QLabel*>(found)) SetLabelText(label, QString::fromStdString(text));
}

void DesktopScreen::SetEnabled(const Control& control, bool enabled) {
  SetObjectEnabled(main_.Find(control), enabled);
}

void DesktopScreen::SetObjectEnabled(QObject* control, bool enabled) {
  if (auto* widget = qobject_cast<QWidget*>(control)) {
    if (!enabled && main_.focusWidget() == widget) KeepFocusNear(*widget);
    widget->setEnabled(enabled);
  }
  if (auto* action = qobject_cast<QAction*>(control)) action->setEnabled(enabled);
}

void DesktopScreen::KeepFocusNear(const QWidget& disabled) {
  if (stranded_ != nullptr) return;
  stranded_ = FrameAround(disabled);
  if (stranded_ == nullptr) return;
  // Only when the command is done is it known which controls of the frame are enabled.
  focusMover_.start(0);
}

void DesktopScreen::MoveFocus() {
  if (QWidget* heir = HarmlessControl(*stranded_)) heir->setFocus();
  stranded_ = nullptr;
}

bool DesktopScreen::IsEnabled(const Control& control) const {
  const QObject* found = main_.Find(control);
  const auto* widget = qobject_cast<const QWidget*>(found);
  if (widget != nullptr) return widget->isEnabledTo(widget->parentWidget());
  const auto* action = qobject_cast<const QAction*>(found);
  return action != nullptr && action->isEnabled();
}

bool DesktopScreen::IsSelected(const Control& control) const {
  const auto* button = qobject_cast<QAbstractButton*>(main_.Find(control));
  return button != nullptr && button->isChecked();
}

void DesktopScreen::Select(const Control& option) {
  QObject* found = main_.Find(option);
  const QSignalBlocker quiet(found);
  if (auto* button = qobject_cast<QAbstractButton*>(found)) button->setChecked(true);
}

void DesktopScreen::SetFrameVisible(Slot slot, bool visible) {
  if (auto* frame = qobject_cast<QWidget*>(main_.Find(fraFrame(slot)))) frame->setVisible(visible);
  ForgetLatest(slot);
  if (visible) latest_.insert(publishedNow_++, slot);
}

GridWindow& DesktopScreen::Ensure(Slot slot) {
  std::unique_ptr<GridWindow>& window = windows_[slot];
  if (window == nullptr) {
    if (InfoOf(slot).IsEditor()) {
      auto editor = std::make_unique<EditorWindow>(commands_, slot);
      QObject::connect(editor.get(), &EditorWindow::FileDropped, editor.get(),
                       [this, slot](const QString& name) {
                         if (onDrop_) onDrop_(slot, name);
                       });
      window = std::move(editor);
    } else {
      window = std::make_unique<ViewerWindow>(commands_, slot);
    }
    TellMade(*window);
    if (askDigits_) ExpectDigits(*window);
  }
  return *window;
}

/// The window of a result has room for the line from its first showing on.
void DesktopScreen::ExpectDigits(GridWindow& window) {
  const Slot slot = window.Slot();
  if (!InfoOf(slot).IsEditor())
    window.ShowDigits({QObject::tr("Not checked yet"), true, nullptr, false, false});
  QObject::connect(&window, &GridWindow::CheckAsked, &window,
                   [this, slot](bool wanted) { askDigits_(slot, wanted); });
}

void DesktopScreen::WatchDigits(std::function<void(Slot, bool)> ask,
                                std::function<void()> giveWay) {
  askDigits_ = std::move(ask);
  giveWay_ = std::move(giveWay);
}

void DesktopScreen::Show(Slot slot, const GridContent& content) {
  Ensure(slot).Show(content, wide_[slot]);
}

void DesktopScreen::Write(Slot slot, int row, int col, TextBlock&& texts) {
  Ensure(slot).Grid().SetTexts(row, col, std::move(texts));
}

void DesktopScreen::SetWide(Slot slot, bool wide) {
  wide_[slot] = wide;
  Ensure(slot).SetWide(wide);
}

void DesktopScreen::ShowWindow(Slot slot) {
  GridWindow& window = Ensure(slot);
  PlaceIfNew(window, slot);
  // A window that opens empty waits for typing, except that of the special matrix, which is filled
  // next. Any other leaves the keyboard where it is.
  const bool typing = InfoOf(slot).IsEditor() && slot != kSlotCreated && !window.isVisible() &&
                      window.Grid().Model().IsEmpty();
  window.setAttribute(Qt::WA_ShowWithoutActivating, !typing);
  ShowOpen(window);
  if (!typing) return;
  awaitsTyping_ = true;
  window.activateWindow();
  window.Grid().setFocus();
}

void DesktopScreen::RestoreWindow(Slot slot) {
  GridWindow& window = Ensure(slot);
  PlaceIfNew(window, slot);
  window.setAttribute(Qt::WA_ShowWithoutActivating, false);
  window.showNormal();
  window.raise();
  window.activateWindow();
}

void DesktopScreen::CloseWindow(Slot slot) {
  LatestResult* latest = main_.Latest();
  if (windows_[slot] != nullptr && latest->Window() == windows_[slot].get())
    latest->Show(nullptr, false);
  if (windows_[slot] != nullptr && windows_[slot]->isVisible()) memory_.Keep(*windows_[slot]);
  windows_[slot].reset();
}

void DesktopScreen::HideEntryBox(Slot slot) { Ensure(slot).HideEntryBox(); }

void DesktopScreen::BringMainToFront() {
  main_.setWindowState(main_.windowState() & ~Qt::WindowMinimized);
  main_.raise();
  if (!awaitsTyping_) main_.activateWindow();
  awaitsTyping_ = false;
}

ResultsWindow& DesktopScreen::EnsureResults() {
  if (results_ != nullptr) return *results_;
  results_ = std::make_unique<ResultsWindow>();
  const auto run = [this](void (*command)(Context&, const std::vector<std::string>&)) {
    return [this, command] {
      commands_.Do([&](Context& context) { command(context, results_->Lines()); });
    };
  };
  QObject::connect(results_.get(), &ResultsWindow::SaveRequested, results_.get(), run(SaveResults));
  QObject::connect(results_.get(), &ResultsWindow::PrintRequested, results_.get(),
                   run(PrintResults));
  TellMade(*results_);
  return *results_;
}

void DesktopScreen::Append(const std::vector<std::string>& lines) {
  ResultsWindow& window = EnsureResults();
  window.UseReportFont();
  QStringList added;
  for (const std::string& line : lines) added.append(QString::fromStdString(line));
  window.AddLines(added);
}

void DesktopScreen::ShowResults() {
  ResultsWindow& window = EnsureResults();
  PlaceIfNew(window, std::nullopt);
  // Tasks write reports, too: the keyboard stays where it is.
  window.setAttribute(Qt::WA_ShowWithoutActivating);
  window.showNormal();
  window.raise();
}

void DesktopScreen::CloseAllWindows() {
  for (const Slot slot : kAllSlots) CloseWindow(slot);
  if (results_ != nullptr && results_->isVisible()) memory_.Keep(*results_);
  results_.reset();
}

}  // namespace qmx
