#pragma once

#include <QColor>
#include <QFont>
#include <QStyledItemDelegate>

#include <vector>

class VXSpreadsheet;
class vtkColorTransferFunction;

/**
 * @brief Paints a cell: background from the column diff or a colour map (table-wide before
 * per-column), text in a colour that reads on it, and a dotted frame round the current column.
 * The colour maps are not owned.
 */
class VXSpreadsheetItemDelegate : public QStyledItemDelegate
{
  Q_OBJECT

public:
  enum NotationType
  {
    Auto = 0,
    Fixed = 1,
    Scientific = 2
  };

  explicit VXSpreadsheetItemDelegate(VXSpreadsheet* spreadsheet, QObject* parent = nullptr);
  ~VXSpreadsheetItemDelegate() override;

  void setNotationType(NotationType notation);
  NotationType notationType() const;
  void setPrecision(int precision);
  int precision() const;

  void addColumn();
  void addColumns(int count);
  /** @brief Empties the column's slot; later columns keep their slots. */
  void removeColumn(int column);
  void clearColumns();
  /** @brief A negative column sets the map of the whole table; an out-of-range one is ignored. */
  void setColorMap(vtkColorTransferFunction* colorMap, int column);
  void setCurrentColumnHighlighting(bool highlight);
  void setColumnDiff(bool enabled, int first, int second);

  vtkColorTransferFunction* tableColorMap() const;
  const std::vector<vtkColorTransferFunction*>& columnColorMaps() const;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  /** @brief White text on dark backgrounds, black on light ones. */
  static QColor TextColorFor(const QColor& background);
  /** @brief The colour a map gives to a cell's text, or its NaN colour when the text is no number. */
  static QColor MapColor(vtkColorTransferFunction* colorMap, const QString& text);

private:
  void paintCurrentColumnFrame(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const;

  VXSpreadsheet* m_Spreadsheet = nullptr;
  QFont m_Font;
  QColor m_OverlayColor;
  int m_Margin = 0;
  NotationType m_Notation = Auto;
  int m_Precision = 6;
  vtkColorTransferFunction* m_TableColorMap = nullptr;
  std::vector<vtkColorTransferFunction*> m_ColumnColorMaps;
  bool m_HighlightCurrentColumn = true;
  bool m_ColumnDiffEnabled = false;
  int m_ColumnDiffFirst = 0;
  int m_ColumnDiffSecond = 1;
};
