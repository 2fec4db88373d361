// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QStringList>
#include <QWidget>

namespace qmx {

/// The window frmAbout: text is printed on it line by line in its own font, below what was printed
/// before. A click anywhere, or Escape, closes it for good.
class AboutWindow : public QWidget {
 public:
  AboutWindow();

  /// Prints the name and version with their empty lines.
  void PrintVersion();
  const QStringList& Lines() const { return lines_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Print(const QString& line);

  QStringList lines_;
};

/// Shows the About window, creating it if there is none, and prints on it.
void ShowAbout(QPointer<AboutWindow>& frmAbout);

}  // namespace qmx
