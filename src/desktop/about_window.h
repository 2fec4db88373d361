// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QStringList>
#include <QWidget>

#include "desktop/licences_window.h"

namespace qmx {

/// The window frmAbout: text is printed on it line by line in its own font, below what was printed
/// before. A click anywhere, or Escape, closes it for good; but its button cmdLicences opens the
/// window frmLicences.
class AboutWindow : public QWidget {
 public:
  AboutWindow();
  ~AboutWindow() override;
  AboutWindow(const AboutWindow&) = delete;
  AboutWindow& operator=(const AboutWindow&) = delete;

  /// Prints the name and version with their empty lines.
  void PrintVersion();
  const QStringList& Lines() const { return lines_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Print(const QString& line);
  void AddLicences();
  void ShowLicences();

  QStringList lines_;
  QPointer<LicencesWindow> frmLicences_;
};

/// Shows the About window, creating it if there is none, and prints on it.
void ShowAbout(QPointer<AboutWindow>& frmAbout);

}  // namespace qmx
