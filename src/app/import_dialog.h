// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "commands/foreign_dialogs.h"

namespace qmx {

/// Shows how a file of another program is understood, with its first rows, and lets that be
/// changed: the settings of a text table, the variable of a file that holds several, the column of
/// the right-hand sides of a system. The answer is written into the question when it is accepted.
class ImportDialog : public QDialog {
  Q_OBJECT

 public:
  ImportDialog(ImportQuestion& question, QWidget* parent);

  void accept() override;

 private:
  void AddHead(QVBoxLayout* rows);
  void AddTable(QVBoxLayout* rows);
  void AddVariables(QVBoxLayout* rows);
  void AddPreview(QVBoxLayout* rows);
  void AddRightSide(QVBoxLayout* rows);
  void AddButtons(QVBoxLayout* rows);
  QComboBox* AddChoice(QFormLayout* form, const char* name, const QString& label,
                       std::initializer_list<std::pair<QString, char>> choices, char chosen);
  QSpinBox* AddCount(QFormLayout* form, const char* name, const QString& label, int count);

  bool IsTable() const { return question_.contents.format == ForeignFormat::kTextTable; }
  TableSettings Settings() const;
  std::size_t Variable() const;
  Q_INVOKABLE void ShowPreview();
  void ShowTable();
  void ShowVariable();
  void ShowProblem(const QString& problem);

  ImportQuestion& question_;
  QLabel* problem_ = nullptr;
  // Of a text table.
  QComboBox* separator_ = nullptr;
  QComboBox* decimal_ = nullptr;
  QComboBox* comment_ = nullptr;
  QSpinBox* headingRows_ = nullptr;
  QSpinBox* headingColumns_ = nullptr;
  QTreeWidget* variables_ = nullptr;  ///< Where there are several.
  QLabel* previewTitle_ = nullptr;
  QTableWidget* preview_ = nullptr;
  // For the System.
  QRadioButton* lastColumn_ = nullptr;
  QRadioButton* someColumn_ = nullptr;
  QSpinBox* column_ = nullptr;
  QPushButton* import_ = nullptr;
  bool looking_ = false;  ///< A variable is being read for the preview.
};

}  // namespace qmx
