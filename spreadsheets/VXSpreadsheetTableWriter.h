#pragma once

#include <QString>

class QTextStream;
class VXSpreadsheetModel;

/**
 * @brief Delimited text of a whole table, as the spreadsheet's export writes it: a "sep=" line, a
 * header line (bare delimiters when the table shows no headers), one line per row of the whole
 * table (not only the rows a view's window shows) and a final newline. Rows are formatted one by one into a
 * large reused buffer, never all at once.
 */
class VXSpreadsheetTableWriter
{
public:
  enum class Status
  {
    Written,
    OpenFailed,
    CommitFailed
  };

  static constexpr int k_BufferReserve = 1000000;
  static constexpr int k_FlushLength = 999969;

  static void Write(QTextStream& stream, const VXSpreadsheetModel& model, const QString& delimiter,
                    bool withHeaders);
  /** @brief Writes through a QSaveFile, so a failed export leaves the old file. */
  static Status WriteFile(const QString& filePath, const VXSpreadsheetModel& model, const QString& delimiter,
                          bool withHeaders);
};
