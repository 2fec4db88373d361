// SPDX-License-Identifier: MIT
// The parts of the screen that tell where windows go and which one is in front.

#include <QApplication>
#include <QScreen>
#include <algorithm>

#include "app/desktop_screen.h"
#include "app/window_geometry.h"
#include "app/window_placement.h"
#include "desktop/window_front.h"
#include "grids/document_window.h"
#include "grids/picture_window.h"
#include "workspace/result_table.h"

namespace qmx {
namespace {

constexpr int kNarrowestGrid = 300;
constexpr QSize kSmallestTile(240, 150);
constexpr int kGap = 6;
constexpr int kCascadeStep = 30;

/// The matrix that a result is computed from, or that is found before it by the same task.
std::optional<Slot> OriginOf(Slot slot) {
  const ResultInfo& result = ResultOf(slot);
  if (slot == result.lastSlot && slot != result.firstSlot) return result.firstSlot;
  if (slot == kSlotEigenvectors) return kSlotEigenvalues;
  if (slot == kSlotPermutation) return kSlotU;
  if ((result.operands & kFromSystem) != 0) return kSlotSystem;
  if ((result.operands & kFromB) != 0) return kSlotB;
  if ((result.operands & kFromA) != 0) return kSlotA;
  return {};
}

/// What the desktop adds around a window.
QSize FrameOf(const QWidget& window) { return window.frameGeometry().size() - window.size(); }

/// Windows of the program beside the main one and those of matrices and results: help, About.
std::vector<QWidget*> OtherWindows(const QWidget& main, const std::vector<QWidget*>& known) {
  std::vector<QWidget*> others;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const bool isKnown = std::find(known.begin(), known.end(), window) != known.end();
    const bool isWindow = window->windowType() == Qt::Window && window->isVisible();
    if (isWindow && !isKnown && window != &main && !window->isMinimized()) others.push_back(window);
  }
  return others;
}

}  // namespace

std::vector<QWidget*> DesktopScreen::ShownWindows() const {
  std::vector<QWidget*> shown;
  for (const std::unique_ptr<GridWindow>& window : windows_) {
    if (window != nullptr && window->isVisible()) shown.push_back(window.get());
  }
  if (results_ != nullptr && results_->isVisible()) shown.push_back(results_.get());
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const bool isOfMatrix = qobject_cast<PictureWindow*>(window) != nullptr ||
                            qobject_cast<DocumentWindow*>(window) != nullptr;
    if (isOfMatrix && window->isVisible()) shown.push_back(window);
  }
  return shown;
}

std::vector<QWidget*> DesktopScreen::OpenWindows() const {
  std::vector<QWidget*> open = ShownWindows();
  std::erase_if(open, [](const QWidget* window) { return window->isMinimized(); });
  return open;
}

std::optional<QRect> DesktopScreen::OwnerOf(std::optional<Slot> slot) const {
  std::optional<Slot> origin = slot ? OriginOf(*slot) : std::nullopt;
  while (origin) {
    const GridWindow* window = Window(*origin);
    if (window != nullptr && window->isVisible() && !window->isMinimized())
      return window->frameGeometry();
    origin = OriginOf(*origin);
  }
  return {};
}

void DesktopScreen::PlaceIfNew(QWidget& window, std::optional<Slot> slot) {
  shownInTurn_.removeAll(&window);
  shownInTurn_.append(&window);
  if (window.testAttribute(Qt::WA_Moved)) return;
  const QRect main = main_.frameGeometry();
  if (memory_.Recall(window) && !main.contains(window.frameGeometry())) return;
  Surroundings around{main, main_.TaskArea(), {}, OwnerOf(slot)};
  std::vector<QWidget*> open = OpenWindows();
  // As they were shown one after the other, they lie one upon the other.
  std::stable_sort(open.begin(), open.end(), [this](const QWidget* one, const QWidget* other) {
    return shownInTurn_.indexOf(one) < shownInTurn_.indexOf(other);
  });
  for (const QWidget* other : open) around.others.push_back(other->frameGeometry());
  const auto* grid = qobject_cast<GridWindow*>(&window);
  const bool isFitted = grid != nullptr && !grid->HasChosenSize();
  // A grid can be scrolled; a report is read line by line.
  PlaceBeside(around, window, isFitted ? kNarrowestGrid : window.width());
  if (isFitted) static_cast<GridWindow&>(window).AcceptSize();
  memory_.Watch(window);
}

void DesktopScreen::ActivateMain() { BringToFront(main_); }

QRect DesktopScreen::AreaFor(int windows) const {
  const QRect screen = main_.screen()->availableGeometry();
  QRect beside = screen;
  if (!main_.isMinimized()) beside.setLeft(main_.frameGeometry().right() + 1 + kGap);
  const QList<QRect> tiles = beside.width() > 0 ? Tiles(beside, windows) : QList<QRect>();
  const bool isEnough = !tiles.isEmpty() && tiles.front().width() >= kSmallestTile.width() &&
                        tiles.front().height() >= kSmallestTile.height();
  return isEnough ? beside : screen;
}

void DesktopScreen::Arrange(const std::vector<QWidget*>& windows, const QList<QRect>& places) {
  int index = 0;
  for (QWidget* window : windows) {
    const QRect place = places[index++];
    if (window->isMaximized()) window->setWindowState(Qt::WindowNoState);
    // Both at once: the window is never seen with one of them alone.
    const QPoint inner = window->geometry().topLeft() - window->frameGeometry().topLeft();
    window->setGeometry({place.topLeft() + inner, place.size() - FrameOf(*window)});
    window->raise();
    memory_.Watch(*window);
  }
  if (!windows.empty()) windows.back()->activateWindow();
}

void DesktopScreen::TileWindows() {
  const std::vector<QWidget*> windows = OpenWindows();
  const int count = static_cast<int>(windows.size());
  Arrange(windows, Tiles(AreaFor(count), count));
}

void DesktopScreen::CascadeWindows() {
  const std::vector<QWidget*> windows = OpenWindows();
  QList<QSize> sizes;
  for (const QWidget* window : windows) sizes.append(window->frameGeometry().size());
  Arrange(windows, Cascade(AreaFor(1), sizes, kCascadeStep));
}

void DesktopScreen::BringResultsToFront() {
  QWidget* last = nullptr;
  for (QWidget* window : OpenWindows()) {
    const auto* grid = qobject_cast<GridWindow*>(window);
    const auto* picture = qobject_cast<PictureWindow*>(window);
    if (grid != nullptr && HasPermanentFrame(grid->Slot())) continue;
    if (picture != nullptr && HasPermanentFrame(picture->Slot())) continue;
    window->raise();
    last = window;
  }
  if (last != nullptr) last->activateWindow();
}

void DesktopScreen::GoToWindow(bool next) {
  std::vector<QWidget*> windows = OpenWindows();
  for (QWidget* other : OtherWindows(main_, windows)) windows.push_back(other);
  windows.insert(windows.begin(), &main_);
  const auto count = windows.size();
  const auto active = std::find(windows.begin(), windows.end(), QApplication::activeWindow());
  const std::size_t now = active == windows.end() ? 0 : active - windows.begin();
  QWidget* wanted = windows[(now + (next ? 1 : count - 1)) % count];
  if (wanted == &main_) return ActivateMain();
  wanted->raise();
  wanted->activateWindow();
}

void DesktopScreen::CloseActiveWindow() {
  QWidget* active = QApplication::activeWindow();
  if (active == nullptr || active == &main_) return;
  if (auto* grid = qobject_cast<GridWindow*>(active)) return grid->Dismiss();
  if (active == results_.get()) return active->hide();
  active->close();
}

}  // namespace qmx
