// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>
#include <QWidget>

namespace qmx {

/// The window frmLicences: under which licences the program and the libraries within it stand, as a
/// text (txtLicences) that can be scrolled, selected and copied. Escape closes it for good.
class LicencesWindow : public QWidget {
 public:
  LicencesWindow();
  QString Text() const { return text_->toPlainText(); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPlainTextEdit* text_;
};

}  // namespace qmx
