// SPDX-License-Identifier: MIT
#include "app/button_row.h"

#include <algorithm>

#include "app/widgets.h"

namespace qmx {
namespace {

constexpr int kGap = 2;

}  // namespace

ButtonRow::ButtonRow(QWidget* frame) : QLayout(frame) { setContentsMargins(0, 0, 0, 0); }

ButtonRow::~ButtonRow() { qDeleteAll(items_); }

void ButtonRow::Add(CommandButton* button) {
  addChildWidget(button);
  addItem(new QWidgetItem(button));
  invalidate();
}

QLayoutItem* ButtonRow::takeAt(int index) {
  return index >= 0 && index < count() ? items_.takeAt(index) : nullptr;
}

CommandButton* ButtonRow::Button(int index) const {
  return qobject_cast<CommandButton*>(items_[index]->widget());
}

QSize ButtonRow::SizeOf(bool captions) const {
  QSize size(std::max(0, count() - 1) * kGap, 0);
  for (int i = 0; i < count(); ++i) {
    const QSize one = captions ? Button(i)->CaptionSize() : Button(i)->SmallestSize();
    size = {size.width() + one.width(), std::max(size.height(), one.height())};
  }
  return size;
}

QSize ButtonRow::sizeHint() const { return SizeOf(true).expandedTo(SizeOf(false)); }

QSize ButtonRow::minimumSize() const { return SizeOf(false); }

void ButtonRow::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  const bool captions = rect.width() >= SizeOf(true).width();
  int left = rect.left();
  int rest = rect.width() - SizeOf(captions).width();
  for (int i = 0; i < count(); ++i) {
    CommandButton* button = Button(i);
    button->ShowCaption(captions);
    const int share = std::max(0, rest / (count() - i));
    rest -= share;
    const QSize own = captions ? button->CaptionSize() : button->SmallestSize();
    items_[i]->setGeometry({left, rect.top(), own.width() + share, rect.height()});
    left += own.width() + share + kGap;
  }
}

}  // namespace qmx
