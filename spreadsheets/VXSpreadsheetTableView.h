#pragma once

#include <QTableView>

/**
 * @brief The table of a spreadsheet; while it has no rows it tells how to fill it.
 */
class VXSpreadsheetTableView : public QTableView
{
  Q_OBJECT

public:
  explicit VXSpreadsheetTableView(QWidget* parent = nullptr);
  ~VXSpreadsheetTableView() override;

  static QString EmptyHintText();
  /** @brief The hint as laid out for a viewport of that width. */
  static QString EmptyHintHtml(int viewportWidth);

protected:
  void paintEvent(QPaintEvent* event) override;
};
