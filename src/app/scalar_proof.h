// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "commands/digit_texts.h"
#include "workspace/result_table.h"

namespace qmx {

/// Lies over the label of a number and paints its digits: those that are not proved grey. A
/// selected text is left to the label.
class GreyDigits : public QWidget {
  Q_OBJECT

 public:
  explicit GreyDigits(QLabel* label);

  void ShowHeld(int held);

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLabel* label_;
  int held_ = kDoubleDigits;
};

/// What stands beside a number or a verdict on the main window: how many digits hold, or whether it
/// is proved, `lblDigitsOfDeterminant` and its kin; or a button to have it checked.
class ScalarProof : public QWidget {
  Q_OBJECT

 public:
  ScalarProof(Result result, QLabel* value, QWidget* parent);

  Result Of() const { return result_; }
  std::string Value() const { return value_->text().toStdString(); }
  void Show(const ScalarDigits& digits, bool offersCheck, bool isChecking);

 Q_SIGNALS:
  /// The user wants it to be checked, or wants that no longer.
  void Asked(bool wanted);

 private:
  Result result_;
  QLabel* value_;
  QLabel* text_;
  QPushButton* check_;
  GreyDigits* grey_ = nullptr;  ///< Of a number.
  bool isChecking_ = false;
};

}  // namespace qmx
