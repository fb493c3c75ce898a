#include "spreadsheets/VXSpreadsheetTableWriter.h"

#include <QAbstractItemModel>
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

void VXSpreadsheetTableWriter::Write(QTextStream& stream, const QAbstractItemModel& model,
                                     const QString& delimiter, bool withHeaders)
{
  QString buffer;
  buffer.reserve(k_BufferReserve);
  buffer += QStringLiteral("sep=") + delimiter + QLatin1Char('\n');
  const int columns = model.columnCount();
  const int rows = model.rowCount();
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
  for (int row = 0; row < rows; ++row)
  {
    buffer += QLatin1Char('\n');
    for (int column = 0; column < columns; ++column)
    {
      if (column > 0)
      {
        buffer += delimiter;
      }
      buffer += model.data(model.index(row, column), Qt::DisplayRole).toString();
    }
    FlushIfFull(stream, buffer);
  }
  buffer += QLatin1Char('\n');
  stream << buffer;
  stream.flush();
}

VXSpreadsheetTableWriter::Status VXSpreadsheetTableWriter::WriteFile(const QString& filePath,
                                                                     const QAbstractItemModel& model,
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
