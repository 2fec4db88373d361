// SPDX-License-Identifier: MIT
#include "grids/grid_window.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>

#include "commands/grid_commands.h"
#include "grids/accessible_grid.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

constexpr QSize kSmallest(260, 150);
constexpr double kLargestShare = 0.6;  // Of the screen, before the user makes it larger.

}  // namespace

GridWindow::GridWindow(CommandRunner& commands, qmx::Slot slot)
    : QWidget(nullptr, Qt::Window),
      commands_(commands),
      slot_(slot),
      grid_(new MatrixGrid(InfoOf(slot).kind != WindowKind::kColumnViewer, this)),
      layout_(new QVBoxLayout(this)) {
  const SlotInfo& info = InfoOf(slot);
  setObjectName(ToQString(info.window));
  setWindowTitle(ToQString(info.caption));
  grid_->setObjectName(ToQString(info.grid));
  grid_->setAccessibleName(ToQString(info.caption));
  layout_->setContentsMargins(6, 6, 6, 6);
  layout_->addWidget(grid_);
  lower_ = new QHBoxLayout;
  layout_->addLayout(lower_);
  stale_ = new QLabel(this);
  stale_->setObjectName("lblStale");
  stale_->setTextFormat(Qt::PlainText);
  // A long text must not make the window wider.
  stale_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  stale_->hide();
  lower_->addWidget(stale_, 1);
  lower_->addStretch();
  digits_ = new DigitsLine(this);
  layout_->addWidget(digits_);
  connect(digits_, &DigitsLine::Asked, this, &GridWindow::CheckAsked);
  connect(grid_, &MatrixGrid::HeaderWidened, this, &GridWindow::FitToGrid);
  connect(grid_, &MatrixGrid::CellsMoved, this, &GridWindow::PlaceEntryBox);
  connect(grid_, &MatrixGrid::FontChanged, this, &GridWindow::TakeFont);
  AddEntries();
}

void GridWindow::AddEntryBox() {
  box_ = new EntryBox(this);
  box_->setFont(grid_->font());
  connect(box_, &EntryBox::SelectionKeyPressed, grid_, &MatrixGrid::SelectByKey);
  connect(box_, &EntryBox::LeftByTab, this, &GridWindow::HideEntryBox);
  connect(box_, &EntryBox::CopyRequested, this, &GridWindow::CopyFromBox);
  connect(box_, &EntryBox::PasteRequested, this, [this] { PasteIntoBox(); });
  connect(box_, &EntryBox::MenuOpening, this, &GridWindow::ExtendBoxMenu);
}

void GridWindow::AddToggle() {
  auto* toggle = new QPushButton(tr("Toggle &width"), this);
  toggle->setObjectName("cmdToggleWidth");
  toggle->setToolTip(tr("All digits in wide columns, or seven in narrow ones"));
  toggle->setAutoDefault(true);  // Enter presses it, as Space does.
  lower_->insertWidget(0, toggle, 0, Qt::AlignLeft);
  connect(toggle, &QPushButton::clicked, this, &GridWindow::Toggle);
}

void GridWindow::AddToLowerLine(QWidget& button) {
  lower_->insertWidget(lower_->indexOf(stale_), &button);
  FitToGrid();
}

void GridWindow::Show(const GridContent& content, bool wide) {
  const GridModel& model = grid_->Model();
  const auto write = [this](const std::vector<GridContent::CellText>& texts) {
    for (const auto& cell : texts)
      grid_->SetTextMatrix(cell.row, cell.col, QString::fromStdString(cell.text));
  };
  if (content.anew || model.DataRows() != content.rows || model.DataCols() != content.cols) {
    grid_->SetUp(content.rows, content.cols, wide);
    FitToGrid();
    write(content.headings);
  }
  for (const auto& cell : content.colours) grid_->SetCellColour(cell.row, cell.col, cell.colour);
  if (content.colour) grid_->SetGridColour(*content.colour);
  write(content.texts);
  if (content.elements == nullptr) return;
  grid_->Populate(*content.elements, wide, content.columns.empty() ? nullptr : &content.columns);
}

void GridWindow::Restore(const GridModel::Contents& contents, bool wide) {
  HideEntryBox();
  grid_->Restore(contents, wide);
  FitToGrid();
}

void GridWindow::ShowStale(const QString& why) {
  stale_->setText(why);
  stale_->setToolTip(why);
  stale_->setVisible(!why.isEmpty());
  grid_->setAccessibleDescription(why);
}

void GridWindow::ShowDigits(const ShownDigits& digits) {
  grid_->SetDigits(digits);
  if (digits_->Show(digits)) FitToGrid();
  if (box_ != nullptr && !box_->isHidden()) ShowToolTip(box_->text());
}

void GridWindow::ShowFractions(std::shared_ptr<const std::vector<ExactNumber>> fractions) {
  if (fractions == grid_->Model().Fractions()) return;
  HideEntryBox();
  grid_->SetFractions(std::move(fractions));
  FitToGrid();
}

void GridWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && digits_->IsChecking()) {
    Q_EMIT CheckAsked(false);
  } else {
    QWidget::keyPressEvent(event);
  }
}

void GridWindow::SetWide(bool wide) {
  {
    // The cell may be out of sight until the window has its new size, too.
    const QSignalBlocker quiet(grid_);
    grid_->SetWide(wide);
    FitToGrid();
    grid_->scrollTo(grid_->currentIndex(), QAbstractItemView::EnsureVisible);
  }
  PlaceEntryBox();
}

void GridWindow::TakeFont() {
  if (box_ != nullptr) box_->setFont(grid_->font());
  {
    // The cell may be out of sight until the window has its new size, too.
    const QSignalBlocker quiet(grid_);
    FitToGrid();
    grid_->scrollTo(grid_->currentIndex(), QAbstractItemView::EnsureVisible);
  }
  // Scroll bars that are no longer needed go only when this event is done.
  QMetaObject::invokeMethod(this, "PlaceEntryBox", Qt::QueuedConnection);
}

void GridWindow::FitToGrid() {
  if (fitted_.isValid() && size() != fitted_) return;
  const QMargins margins = layout_->contentsMargins();
  // Of all that stands in the column, only the grid has a size that depends on its contents, and
  // the line of digits one that depends on the width.
  int below = layout_->sizeHint().height() - grid_->sizeHint().height();
  QSize wanted = grid_->FullSize() + QSize(margins.left() + margins.right(), 0);
  if (!digits_->isHidden()) {
    const int width = std::clamp(wanted.width(), kSmallest.width(), LargestSize().width());
    const int room = width - margins.left() - margins.right();
    below += digits_->heightForWidth(room) - digits_->sizeHint().height();
  }
  wanted += QSize(0, below);
  const QSize largest = LargestSize();
  // A scroll bar one way takes room the other way.
  const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  const bool tooHigh = wanted.height() > largest.height();
  const bool tooWide = wanted.width() > largest.width();
  wanted += QSize(tooHigh ? bar : 0, tooWide ? bar : 0);
  fitted_ = wanted.boundedTo(largest).expandedTo(kSmallest).expandedTo(layout_->minimumSize());
  resize(fitted_);
}

/// A share of the screen; once the window is on show, no more than there is right of it and below.
QSize GridWindow::LargestSize() const {
  const QRect available = screen()->availableGeometry();
  const QSize largest = available.size() * kLargestShare;
  if (!isVisible()) return largest;
  const QPoint edges = frameGeometry().bottomRight() - geometry().bottomRight();
  const QPoint rest = available.bottomRight() - edges - geometry().topLeft();
  return largest.boundedTo(QSize(rest.x(), rest.y()).expandedTo(size()));
}

void GridWindow::Toggle() {
  commands_.Do([this](Context& context) { ToggleWidth(context, slot_); });
  if (box_ == nullptr || box_->isHidden()) return;
  // The cell shows the number in another precision now.
  FillEntryBox(grid_->TextMatrix(grid_->Row(), grid_->Col()));
  PlaceEntryBox();
}

// What the cell shows is no change of the element: it may be rounded.
void GridWindow::FillEntryBox(const QString& text) {
  const QSignalBlocker quiet(box_);
  box_->setText(text);
}

void GridWindow::OpenEntryBox() {
  if (box_ == nullptr || grid_->Row() < 0) return;
  grid_->SetCurrentCell(grid_->Row(), grid_->Col());
  commands_.EndCell();
  const QString text = grid_->TextMatrix(grid_->Row(), grid_->Col());
  const bool hadFocus = box_->hasFocus();
  FillEntryBox(text);
  box_->selectAll();
  ShowToolTip(text);
  // After the text, whose change is not to be heard as if it were typed.
  if (hadFocus) RenewForScreenReaders(*box_);
  box_->setAccessibleName(NameOfCell(*grid_, grid_->Row(), grid_->Col()));
  box_->show();
  PlaceEntryBox();
  box_->raise();
  box_->setFocus();
  // The box has gone to another cell and taken the keyboard along.
  if (hadFocus) TellFocus(*box_);
}

void GridWindow::ShowToolTip(const QString& text) {
  const std::string tip = CellToolTip(slot_, grid_->Row(), grid_->Col(), text.toStdString());
  const QString digits = grid_->Model().DigitsTip(grid_->Row(), grid_->Col());
  box_->setToolTip(QString::fromStdString(tip) + (digits.isEmpty() ? digits : '\n' + digits));
  box_->setAccessibleDescription(digits);
}

void GridWindow::PlaceEntryBox() {
  if (box_ == nullptr || box_->isHidden()) return;
  if (!grid_->IsInSight(grid_->Row(), grid_->Col())) {
    HideEntryBox();
    return;
  }
  const QPoint corner = grid_->viewport()->mapTo(this, QPoint(0, 0));
  // A cell that is larger than the window is covered as far as it is seen.
  const QRect cell = grid_->CellRect(grid_->Row(), grid_->Col()) & grid_->viewport()->rect();
  box_->setGeometry(cell.translated(corner));
}

void GridWindow::HideEntryBox() {
  if (box_ == nullptr || box_->isHidden()) return;
  commands_.EndCell();
  const bool hadFocus = box_->hasFocus() || focusWidget() == box_;
  // First, lest the keyboard pass through another control on its way.
  if (hadFocus) grid_->setFocus();
  box_->hide();
}

bool GridWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowDeactivate) HideEntryBox();
  return QWidget::event(event);
}

void GridWindow::Dismiss() {
  HideEntryBox();
  hide();
}

void GridWindow::closeEvent(QCloseEvent* event) {
  // The close box hides; only a reset and the end of the program close for good.
  if (!event->spontaneous()) return HideEntryBox();
  event->ignore();
  Dismiss();
}

}  // namespace qmx
