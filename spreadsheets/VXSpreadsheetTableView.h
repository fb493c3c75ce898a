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

  /** @brief Headers longer than this many average characters are elided, with the whole in a tool tip. */
  static constexpr int k_MaxHeaderCharacters = 40;

  static QString EmptyHintText();
  /** @brief The hint as laid out for a viewport of that width. */
  static QString EmptyHintHtml(int viewportWidth);

  /**
   * @brief The width the column's header text needs, at most k_MaxHeaderCharacters wide; 0 for a
   * column that is not there.
   */
  int headerWidth(int column) const;
  /** @brief True when the column is narrower than its header text, which then shows elided. */
  bool headerElided(int column) const;
  /** @brief The whole header text when it shows elided, else empty: the header's tool tip. */
  QString headerToolTip(int column) const;

protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
};
