#include "spreadsheets/VXSpreadsheetTableWriter.h"

#include "spreadsheets/VXSpreadsheetModel.h"

#include <QSaveFile>
#include <QTextStream>

namespace
{
void FlushIfFull(QTextStream& stream, QString& buffer)
{
  if (buffer.size() >= VXSpreadsheetTableWriter::k_FlushLength)
  {
    stream << buffer;
    buffer.resize(0); // keeps the reservation
  }
}
} // namespace

void VXSpreadsheetTableWriter::Write(QTextStream& stream, const VXSpreadsheetModel& model,
                                     const QString& delimiter, bool withHeaders)
{
  QString buffer;
  buffer.reserve(k_BufferReserve);
  buffer += QStringLiteral("sep=") + delimiter + QLatin1Char('\n');
  const int columns = model.columnCount();
  const quint64 rows = model.tableRowCount();
  for (int column = 0; column < columns; ++column)
  {
    if (column > 0)
    {
      buffer += delimiter;
    }
    if (withHeaders)
    {
      buffer += model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    }
  }
  for (quint64 row = 0; row < rows; ++row)
  {
    buffer += QLatin1Char('\n');
    for (int column = 0; column < columns; ++column)
    {
      if (column > 0)
      {
        buffer += delimiter;
      }
      buffer += model.textAt(row, column);
    }
    FlushIfFull(stream, buffer);
  }
  buffer += QLatin1Char('\n');
  stream << buffer;
  stream.flush();
}

VXSpreadsheetTableWriter::Status VXSpreadsheetTableWriter::WriteFile(const QString& filePath,
                                                                     const VXSpreadsheetModel& model,
                                                                     const QString& delimiter,
                                                                     bool withHeaders)
{
  QSaveFile file(filePath);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
  {
    return Status::OpenFailed;
  }
  QTextStream stream(&file);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
  stream.setCodec("UTF-8");
#endif
  Write(stream, model, delimiter, withHeaders);
  return file.commit() ? Status::Written : Status::CommitFailed;
}
