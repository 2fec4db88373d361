// SPDX-License-Identifier: MIT
#include "app/import_dialog.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <algorithm>

#include "base/number_text.h"
#include "exchange/text_table.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

constexpr int kRows = 8;  // Of the preview.
constexpr int kCols = 12;
constexpr int kMostHeadings = 1000;
constexpr int kMostColumns = 1000000;

QTableWidgetItem* MakeCell(const QString& text) {
  auto* cell = new QTableWidgetItem(text);
  cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
  return cell;
}

QTableWidgetItem* MakeCell(const PreviewCell& content) {
  QTableWidgetItem* cell = MakeCell(ToQString(content.text));
  QFont font = cell->font();
  switch (content.kind) {
    case PreviewCell::Kind::kNumber:
      cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      break;
    case PreviewCell::Kind::kHeading:
      font.setItalic(true);
      cell->setBackground(QGuiApplication::palette().brush(QPalette::Window));
      cell->setToolTip(QObject::tr("A heading: it is left out"));
      break;
    case PreviewCell::Kind::kNoNumber:
      font.setBold(true);
      font.setUnderline(true);
      cell->setToolTip(
          QObject::tr("No number: the table is refused while this is one of its cells"));
      break;
  }
  cell->setFont(font);
  return cell;
}

/// The numbers of rows or columns, of which so many headings have none.
QStringList Numbers(int headings, int count) {
  QStringList numbers;
  for (int i = 1; i <= count; ++i)
    numbers << (i <= headings ? QString() : QString::number(i - headings));
  return numbers;
}

}  // namespace

ImportDialog::ImportDialog(ImportQuestion& question, QWidget* parent)
    : QDialog(parent), question_(question) {
  setObjectName("frmImport");
  setWindowTitle(tr("Import into %1").arg(ToQString(InfoOf(question.target).title)));
  auto* rows = new QVBoxLayout(this);
  AddHead(rows);
  if (IsTable()) AddTable(rows);
  if (question_.contents.variables.size() > 1) AddVariables(rows);
  AddPreview(rows);
  if (question_.target == kSlotSystem) AddRightSide(rows);
  AddButtons(rows);
  ShowProblem(ToQString(question_.problem));
  // Reading a variable may take a while: the dialog is there by then.
  QMetaObject::invokeMethod(this, "ShowPreview", Qt::QueuedConnection);
}

void ImportDialog::AddHead(QVBoxLayout* rows) {
  const QString name = QFileInfo(ToQString(question_.fileName)).fileName();
  const ForeignVariable& first = question_.contents.variables.front();
  QString what = ToQString(InfoOf(question_.contents.format).title);
  if (question_.contents.variables.size() == 1 && !first.shape.empty())
    what += ", " + ToQString(first.kind) + ", " + ToQString(first.shape);
  auto* head = new QLabel(tr("%1: %2").arg(name, what), this);
  head->setObjectName("lblImportFormat");
  head->setTextFormat(Qt::PlainText);
  head->setWordWrap(true);
  rows->addWidget(head);
  problem_ = new QLabel(this);
  problem_->setObjectName("lblImportProblem");
  problem_->setTextFormat(Qt::PlainText);
  problem_->setWordWrap(true);
  problem_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  QFont bold = problem_->font();
  bold.setBold(true);
  problem_->setFont(bold);
  rows->addWidget(problem_);
}

QComboBox* ImportDialog::AddChoice(QFormLayout* form, const char* name, const QString& label,
                                   std::initializer_list<std::pair<QString, char>> choices,
                                   char chosen) {
  auto* box = new QComboBox(this);
  box->setObjectName(name);
  for (const auto& [text, value] : choices) box->addItem(text, QChar(value));
  box->setCurrentIndex(std::max(box->findData(QChar(chosen)), 0));
  form->addRow(label, box);
  connect(box, &QComboBox::currentIndexChanged, this, &ImportDialog::ShowPreview);
  return box;
}

QSpinBox* ImportDialog::AddCount(QFormLayout* form, const char* name, const QString& label,
                                 int count) {
  auto* box = new QSpinBox(this);
  box->setObjectName(name);
  box->setRange(0, kMostHeadings);
  box->setValue(count);
  form->addRow(label, box);
  connect(box, &QSpinBox::valueChanged, this, &ImportDialog::ShowPreview);
  return box;
}

void ImportDialog::AddTable(QVBoxLayout* rows) {
  const TableSettings& settings = question_.contents.table.settings;
  if (!question_.contents.table.certain) {
    auto* doubt = new QLabel(
        tr("The table can be read in several ways. Please check separator and decimal sign."),
        this);
    doubt->setObjectName("lblImportDoubt");
    doubt->setWordWrap(true);
    rows->addWidget(doubt);
  }
  auto* columns = new QHBoxLayout;
  rows->addLayout(columns);
  auto* left = new QFormLayout;
  auto* right = new QFormLayout;
  columns->addLayout(left);
  columns->addSpacing(16);
  columns->addLayout(right);
  columns->addStretch(1);
  separator_ = AddChoice(
      left, "cboSeparator", tr("&Separator:"),
      {{tr("Comma"), ','}, {tr("Semicolon"), ';'}, {tr("Tab"), '\t'}, {tr("Blanks"), ' '}},
      settings.separator);
  decimal_ = AddChoice(left, "cboDecimalSign", tr("&Decimal sign:"),
                       {{tr("Point"), '.'}, {tr("Comma"), ','}}, settings.decimalSign);
  comment_ = AddChoice(left, "cboCommentSign", tr("Co&mments begin with:"),
                       {{tr("(no comments)"), '\0'}, {"#", '#'}, {"%", '%'}}, settings.commentSign);
  headingRows_ =
      AddCount(right, "spnHeadingRows", tr("Heading &rows at the top:"), settings.headingRows);
  headingColumns_ = AddCount(right, "spnHeadingColumns", tr("Heading &columns at the left:"),
                             settings.headingColumns);
}

void ImportDialog::AddVariables(QVBoxLayout* rows) {
  auto* label = new QLabel(tr("&Variable:"), this);
  variables_ = new QTreeWidget(this);
  variables_->setObjectName("lstVariables");
  variables_->setAccessibleName(tr("Variables of the file"));
  variables_->setHeaderLabels({tr("Name"), tr("Kind"), tr("Size")});
  variables_->setRootIsDecorated(false);
  variables_->setUniformRowHeights(true);
  variables_->setMaximumHeight(fontMetrics().lineSpacing() * 8);
  const QBrush grey = palette().brush(QPalette::Disabled, QPalette::Text);
  for (const ForeignVariable& variable : question_.contents.variables) {
    auto* row = new QTreeWidgetItem(
        {ToQString(variable.name), ToQString(variable.kind), ToQString(variable.shape)});
    variables_->addTopLevelItem(row);
    if (variable.problem.empty()) continue;
    for (int column = 0; column < 3; ++column) {
      row->setToolTip(column, ToQString(variable.problem));
      row->setForeground(column, grey);
    }
  }
  variables_->setCurrentItem(variables_->topLevelItem(static_cast<int>(question_.variable)));
  label->setBuddy(variables_);
  rows->addWidget(label);
  rows->addWidget(variables_);
  connect(variables_, &QTreeWidget::currentItemChanged, this, &ImportDialog::ShowPreview);
}

void ImportDialog::AddPreview(QVBoxLayout* rows) {
  previewTitle_ = new QLabel(tr("First rows:"), this);
  previewTitle_->setObjectName("lblPreview");
  rows->addWidget(previewTitle_);
  preview_ = new QTableWidget(this);
  preview_->setObjectName("tblPreview");
  preview_->setAccessibleName(tr("First rows"));
  preview_->setWordWrap(false);
  preview_->horizontalHeader()->setMinimumSectionSize(fontMetrics().averageCharWidth() * 8);
  preview_->verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + 6);
  preview_->setMinimumHeight(fontMetrics().lineSpacing() * 9);
  preview_->setMinimumWidth(fontMetrics().averageCharWidth() * 78);
  rows->addWidget(preview_, 1);
}

void ImportDialog::AddRightSide(QVBoxLayout* rows) {
  auto* frame = new QGroupBox(tr("Right-hand side"), this);
  frame->setObjectName("fraRightSide");
  auto* choices = new QHBoxLayout(frame);
  lastColumn_ = new QRadioButton(tr("&Last column"), frame);
  lastColumn_->setObjectName("OptLastColumn");
  someColumn_ = new QRadioButton(tr("Colum&n:"), frame);
  someColumn_->setObjectName("OptSomeColumn");
  column_ = new QSpinBox(frame);
  column_->setObjectName("spnRightColumn");
  column_->setAccessibleName(tr("Column of the right-hand side"));
  column_->setRange(1, kMostColumns);
  column_->setValue(question_.rightColumn);
  auto* none = new QRadioButton(tr("None, &fill with 0"), frame);
  none->setObjectName("OptNoColumn");
  for (QWidget* part : {static_cast<QWidget*>(lastColumn_), static_cast<QWidget*>(someColumn_),
                        static_cast<QWidget*>(column_), static_cast<QWidget*>(none)}) {
    choices->addWidget(part);
  }
  choices->addStretch(1);
  lastColumn_->setChecked(question_.rightSide == RightSide::kLastColumn);
  someColumn_->setChecked(question_.rightSide == RightSide::kColumn);
  none->setChecked(question_.rightSide == RightSide::kNone);
  connect(column_, &QSpinBox::valueChanged, someColumn_, [this] { someColumn_->setChecked(true); });
  rows->addWidget(frame);
  if (!question_.rightSideOnly) return;
  auto* factors = new QLabel(
      tr("Stored factors solve the system: of the table only the right-hand side is taken."), this);
  factors->setObjectName("lblRightSideOnly");
  factors->setWordWrap(true);
  rows->addWidget(factors);
}

void ImportDialog::AddButtons(QVBoxLayout* rows) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  import_ = buttons->button(QDialogButtonBox::Ok);
  import_->setText(tr("&Import"));
  import_->setObjectName("cmdImport");
  import_->setToolTip(tr("Reads the file as shown; what is there now is replaced"));
  buttons->button(QDialogButtonBox::Cancel)->setToolTip(tr("Reads nothing"));
  rows->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &ImportDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &ImportDialog::reject);
}

TableSettings ImportDialog::Settings() const {
  const auto sign = [](const QComboBox* box) { return box->currentData().toChar().toLatin1(); };
  return {sign(separator_), sign(decimal_), sign(comment_), headingRows_->value(),
          headingColumns_->value()};
}

std::size_t ImportDialog::Variable() const {
  if (variables_ == nullptr || variables_->currentItem() == nullptr) return question_.variable;
  return static_cast<std::size_t>(variables_->indexOfTopLevelItem(variables_->currentItem()));
}

void ImportDialog::ShowProblem(const QString& problem) {
  problem_->setText(problem);
  problem_->setVisible(!problem.isEmpty());
}

void ImportDialog::ShowPreview() {
  if (looking_) return;
  // What was wrong belongs to what was chosen before.
  if (sender() != nullptr) ShowProblem({});
  IsTable() ? ShowTable() : ShowVariable();
}

void ImportDialog::ShowTable() {
  const TableSettings settings = Settings();
  const bool conflict = settings.separator == ',' && settings.decimalSign == ',';
  import_->setEnabled(!conflict);
  if (conflict) ShowProblem(tr("A comma cannot separate numbers and be their decimal sign, too."));
  const TablePreview shown = PreviewTextTable(question_.bytes, settings, kRows, kCols);
  std::size_t cols = 0;
  for (const auto& row : shown.rows) cols = std::max(cols, row.size());
  preview_->clear();
  preview_->setRowCount(static_cast<int>(shown.rows.size()));
  preview_->setColumnCount(static_cast<int>(cols));
  for (std::size_t i = 0; i < shown.rows.size(); ++i) {
    for (std::size_t j = 0; j < shown.rows[i].size(); ++j)
      preview_->setItem(static_cast<int>(i), static_cast<int>(j), MakeCell(shown.rows[i][j]));
  }
  preview_->setVerticalHeaderLabels(Numbers(settings.headingRows, preview_->rowCount()));
  preview_->setHorizontalHeaderLabels(Numbers(settings.headingColumns, preview_->columnCount()));
  preview_->resizeColumnsToContents();
  previewTitle_->setText(shown.moreRows || shown.moreColumns
                             ? tr("First rows (there is more than is shown here):")
                             : tr("First rows:"));
}

void ImportDialog::ShowVariable() {
  const std::size_t chosen = Variable();
  const ForeignVariable& variable = question_.contents.variables[chosen];
  preview_->clear();
  preview_->setRowCount(0);
  preview_->setColumnCount(0);
  import_->setEnabled(variable.problem.empty());
  if (!variable.problem.empty()) return ShowProblem(ToQString(variable.problem));
  previewTitle_->setText(tr("The first rows are being read..."));
  // Meanwhile events are handled, of which none may come back here.
  looking_ = true;
  if (variables_ != nullptr) variables_->setEnabled(false);
  import_->setEnabled(false);
  const ForeignOutcome<Matrix>& found = question_.look(chosen);
  looking_ = false;
  if (variables_ != nullptr) variables_->setEnabled(true);
  import_->setEnabled(found.Ok());
  if (!found.Ok()) {
    previewTitle_->setText(tr("First rows:"));
    return ShowProblem(ToQString(found.problem));
  }
  const Matrix& values = found.content;
  preview_->setRowCount(std::min(values.Rows(), kRows));
  preview_->setColumnCount(std::min(values.Cols(), kCols));
  for (int i = 1; i <= preview_->rowCount(); ++i) {
    for (int j = 1; j <= preview_->columnCount(); ++j) {
      QTableWidgetItem* cell = MakeCell(QString::fromStdString(CStr(values(i, j))));
      cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      preview_->setItem(i - 1, j - 1, cell);
    }
  }
  preview_->resizeColumnsToContents();
  previewTitle_->setText(tr("First rows of %1 x %2:").arg(values.Rows()).arg(values.Cols()));
}

void ImportDialog::accept() {
  if (IsTable()) question_.contents.table.settings = Settings();
  question_.variable = Variable();
  if (lastColumn_ != nullptr) {
    question_.rightSide = lastColumn_->isChecked()   ? RightSide::kLastColumn
                          : someColumn_->isChecked() ? RightSide::kColumn
                                                     : RightSide::kNone;
    question_.rightColumn = column_->value();
  }
  QDialog::accept();
}

}  // namespace qmx
