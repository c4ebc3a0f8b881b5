#pragma once

#include <QAbstractTableModel>
#include <QTreeView>
#include <functional>
#include <vector>

namespace veldra {

/// A column of a CDataGrid.
struct SGridColumn {
  QString title;
  bool is_number = false;  ///< at the right, and sorted as what it is
};

/// What a CDataGrid shows. It is asked only for the rows that are seen, and for all when they are sorted or copied.
class CGridRows {
 public:
  virtual ~CGridRows() = default;
  virtual int Count() const = 0;
  virtual QString Text(int row, int column) const = 0;
  /// Before which other ROW comes in the order of COLUMN. By default the texts decide, with numbers in them as numbers.
  virtual bool IsBefore(int row, int other, int column) const;
  /// What else the toolkit wants to know: tool tips, icons, colours.
  virtual QVariant Data(int, int, Qt::ItemDataRole) const { return {}; }
};

/// Rows that are there as texts, with a tool tip each where one is wanted.
class CTextRows : public CGridRows {
 public:
  struct SRow {
    QStringList texts;
    QString tool_tip = {};
  };
  std::vector<SRow> rows;

  int Count() const override { return static_cast<int>(rows.size()); }
  QString Text(int row, int column) const override { return rows[static_cast<size_t>(row)].texts.value(column); }
  QVariant Data(int row, int column, Qt::ItemDataRole role) const override;
};

/// A list of rows and columns: a click on a header sorts by it, a third one gives the rows' own order back; the current
/// row stays the same one. Ctrl+C copies the selected rows, tabs between the columns, for a spreadsheet or a forum.
/// However many rows there are, it costs what is seen of them.
///
/// Rows are named by their position in CGridRows, whatever the order on the screen.
class CDataGrid : public QTreeView {
  Q_OBJECT

 public:
  CDataGrid(const char* name, std::vector<SGridColumn> columns, QWidget* parent = nullptr);

  /// ROWS outlive their time in the grid.
  void Show(const CGridRows& rows);
  /// They are others now. The current row is the one at the same place on the screen.
  void Renew();

  int CurrentRow() const;  ///< -1 for none
  void SetCurrentRow(int row);
  std::vector<int> SelectedRows() const;  ///< ascending
  /// Of the selected rows, the header first.
  QString CopiedText() const;
  void Copy() const;
  /// Columns as wide as what is in the first rows; the last one takes what is left.
  void FitColumns();
  /// The same when there are rows for the first time, unless widths were restored.
  void FitColumnsOnce();
  /// What RestoreColumns takes in another run: widths, order and sorting.
  QByteArray KeepColumns() const;
  void RestoreColumns(const QByteArray& state);

 signals:
  /// Enter or a double click.
  void RowActivated(int row);
  void CurrentRowChanged(int row);
  void SelectedRowsChanged();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  class CSorted;
  void Choose(const QModelIndex& at);

  CSorted* sorted_;
  bool has_widths_ = false;
};

}  // namespace veldra
