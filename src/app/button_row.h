// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>
#include <QList>

namespace qmx {

class CommandButton;

/// Buttons side by side. Where there is room for all of their captions these are shown; where there
/// is not, each button that has an icon shows that alone, and the buttons share the width.
class ButtonRow final : public QLayout {
  Q_OBJECT

 public:
  explicit ButtonRow(QWidget* frame);
  ~ButtonRow() override;

  void Add(CommandButton* button);

  /// As wide as the captions want it, and as narrow as the icons allow.
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& rect) override;
  void addItem(QLayoutItem* item) override { items_.append(item); }
  QLayoutItem* itemAt(int index) const override { return items_.value(index); }
  QLayoutItem* takeAt(int index) override;
  int count() const override { return static_cast<int>(items_.size()); }

 private:
  CommandButton* Button(int index) const;
  /// The size of the row with all captions or with icons where there are any.
  QSize SizeOf(bool captions) const;

  QList<QLayoutItem*> items_;
};

}  // namespace qmx
