// SPDX-License-Identifier: MIT
#include "app/latest_result.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include "app/widgets.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

constexpr int kFewestRows = 3;  // With that of the numbers of the columns.
constexpr int kUsualRows = 7;

}  // namespace

LatestResult::LatestResult(QWidget* parent)
    : QWidget(parent),
      title_(new QLabel(this)),
      stale_(MakeStaleMark({"lblStaleLatest"}, this)),
      grid_(new MatrixGrid(true, this)) {
  title_->setObjectName("lblLatest");
  title_->setTextFormat(Qt::PlainText);
  grid_->setObjectName("grdLatest");
  grid_->setToolTip(tr("The latest result. A click opens its window."));
  grid_->installEventFilter(this);
  grid_->viewport()->installEventFilter(this);
  const int row = grid_->verticalHeader()->defaultSectionSize();
  const int rest = 2 * grid_->frameWidth();
  grid_->setMinimumHeight(kFewestRows * row + rest);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(2);
  auto* heading = new QHBoxLayout;
  rows->addLayout(heading);
  heading->addWidget(title_);
  heading->addWidget(stale_);
  heading->addStretch(1);
  rows->addWidget(grid_, 1);
  QSizePolicy keepsPlace(QSizePolicy::Preferred, QSizePolicy::Expanding);
  keepsPlace.setRetainSizeWhenHidden(true);
  setSizePolicy(keepsPlace);
  hide();
}

QSize LatestResult::sizeHint() const {
  const int more = (kUsualRows - kFewestRows) * grid_->verticalHeader()->defaultSectionSize();
  return minimumSizeHint() + QSize(0, more);
}

void LatestResult::Show(const GridWindow* window, bool wide) {
  const bool isOther = window != window_;
  window_ = window;
  setVisible(window != nullptr);
  if (window == nullptr) return grid_->Follow(nullptr);
  grid_->SetWide(wide);
  if (!isOther) return;
  grid_->Follow(&window->Grid());
  grid_->SetWide(wide);
  const QString name = ToQString(InfoOf(window->Slot()).title);
  title_->setText(tr("Latest: %1").arg(name));
  grid_->setAccessibleName(tr("Latest result: %1").arg(name));
}

void LatestResult::ShowStale(const QString& why) {
  if (stale_->toolTip() != why) qmx::ShowStale(stale_, why);
  grid_->setAccessibleDescription(why);
}

bool LatestResult::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && watched == grid_) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    Q_EMIT Chosen(window_->Slot());
    return true;
  }
  if (watched != grid_->viewport()) return false;
  const bool isPress =
      event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
  const bool isRelease = event->type() == QEvent::MouseButtonRelease;
  if (!isPress && !isRelease && event->type() != QEvent::MouseMove) return false;
  // It is one thing that is chosen, not one of its cells.
  if (isRelease && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton &&
      window_ != nullptr)
    Q_EMIT Chosen(window_->Slot());
  return true;
}

}  // namespace qmx
