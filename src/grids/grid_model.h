// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QHash>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "base/matrix.h"
#include "derivation/document.h"
#include "grids/shown_digits.h"
#include "grids/written_blocks.h"

namespace qmx {

/// What a grid shows: the fixed cells of row 0 and column 0, and the data cells behind them, all
/// counted from 0. Elements are kept as numbers, in a view of the matrix that the grid was filled
/// from; their text is made when somebody asks for it. Only texts that were written cell by cell
/// (typed ones, headings, labels) are stored; they hide the elements behind them, so that whoever
/// changes an element of the matrix writes its cell, too.
class GridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// A grid without a header row has its first data row in row 0; its header column holds labels.
  GridModel(bool hasHeaderRow, QObject* parent);

  /// Shapes the grid for rows x cols data cells and numbers its headers. Cells that stay keep their
  /// text and colour, but for the headers; new cells are empty.
  void SetUp(int rows, int cols);
  /// Fills the data cells from a matrix. `columns`, if given, tells for each column whether to fill
  /// it. Cells that are not filled keep their text; elements outside the grid are left out.
  void Populate(const Matrix& values, bool wide, const std::vector<bool>* columns = nullptr);

  /// Text of a cell; empty outside the grid.
  QString Text(int row, int col) const;
  void SetText(int row, int col, const QString& text);
  /// Writes a block of data cells, its first cell at (row, col); it must lie within the grid.
  void SetTexts(int row, int col, TextBlock texts);
  /// The number that a data cell stands for: that of a text that was written there, as it is read,
  /// else the element; 0 where there is neither.
  double Value(int row, int col) const;
  /// True if a cell has no text.
  bool IsBlank(int row, int col) const;
  /// Colour of a cell's text: its own, else that of all cells; invalid where none was given.
  QColor ColourOf(int row, int col) const;
  void SetColour(int row, int col, const QColor& colour);
  void SetDefaultColour(const QColor& colour);

  int DataRows() const { return all_.rows; }
  int DataCols() const { return all_.cols; }
  /// Number of header rows, 0 or 1; the first data row.
  int HeaderRows() const { return headerRows_; }
  bool IsData(int row, int col) const {
    return row >= headerRows_ && row < headerRows_ + all_.rows && col >= 1 && col <= all_.cols;
  }
  /// True while no data cell has a text.
  bool IsEmpty() const;

  /// How a column's elements were written last.
  struct Column {
    int filled = 0;  ///< Rows 1..filled of the elements are on show.
    bool wide = false;
  };

  /// What is known of the digits of the cells. It goes with the next numbers that come in.
  void SetDigits(const ShownDigits& digits);
  /// How many digits of a cell's text are proved; nothing where that is not watched. At the most
  /// there are as many as a wide cell shows.
  std::optional<int> ProvedDigits(int row, int col) const;
  /// The same in words, with what else is known of the exact value; empty where that is not
  /// watched.
  QString DigitsTip(int row, int col) const;

  /// What a screen reader says of a data cell beside its number: how many digits hold, if that is
  /// watched, and where it is.
  QString Description(int row, int col) const;

  /// Exact numbers in place of elements, row by row: those that are known, as fractions. They go
  /// with the next numbers that come in. Null: elements again.
  void SetFractions(std::shared_ptr<const std::vector<ExactNumber>> fractions);
  bool HasFractions() const { return fractions_ != nullptr; }
  const std::shared_ptr<const std::vector<ExactNumber>>& Fractions() const { return fractions_; }
  /// The fraction that a data cell shows; empty where it shows none.
  QString Fraction(int row, int col) const;
  /// The longest one; empty where there is none.
  QString LongestFraction() const;

  /// All that the grid shows. A copy shares what is large.
  struct Contents {
    int rows = 0;
    int cols = 0;
    MatrixView values;
    std::vector<Column> columns{1};
    QHash<quint64, QString> texts;
    WrittenBlocks blocks;  ///< Below the texts.
    QHash<quint64, QColor> colours;
    QColor defaultColour;
  };
  const Contents& Capture() const { return all_; }
  void Restore(const Contents& contents);
  /// What was written into a cell, as SetText does; nothing where it shows what lies below.
  std::optional<QString> WrittenText(int row, int col) const;
  void RestoreText(int row, int col, const std::optional<QString>& text);
  /// Shows these elements where no text was written, instead of those that it shows there, which
  /// have the same shape.
  void ShowElements(const Matrix& values);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  /// The place of a cell among the texts.
  static constexpr quint64 KeyOf(int row, int col) {
    return static_cast<quint64>(row) << 32 | static_cast<quint32>(col);
  }
  void DropCellsOutside();
  bool FillsAll(const Matrix& values, const std::vector<bool>* columns) const;
  void Merge(const Matrix& values, bool wide, const std::vector<bool>* columns);
  void FillColumn(int col, const Matrix& values, bool wide, Matrix& merged);
  QString ElementText(int row, int col) const;
  void KeepBlocksAsTexts();
  void DropProofs();
  bool IsWatched(int row, int col) const;

  int headerRows_;
  Contents all_;
  ShownDigits digits_;
  std::shared_ptr<const std::vector<ExactNumber>> fractions_;
};

}  // namespace qmx
