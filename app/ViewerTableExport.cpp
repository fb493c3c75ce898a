#include "app/ViewerTableExport.h"

#include "app/ViewerScriptInput.h"

#include "data_bridge/zr_contract/IArray.h"
#include "spreadsheets/VXBasicSpreadsheetModel.h"
#include "spreadsheets/VXSpreadsheetTableWriter.h"

#include <QTextStream>

namespace
{
const QString k_Table = QStringLiteral("--table");
const QString k_ExportTable = QStringLiteral("--export-table");
const QString k_Delimiter = QStringLiteral("--delimiter");
const QString k_Notation = QStringLiteral("--notation");
const QString k_Precision = QStringLiteral("--precision");

struct Options
{
  QString file;
  QStringList paths;
  QString output;
  QString delimiter = QStringLiteral(", ");
  VXSpreadsheetModel::NotationType notation = VXSpreadsheetModel::Auto;
  int precision = 6;
};

// Reads the options; an empty text when they can be followed, else why not.
QString parse(const QStringList& arguments, Options& options)
{
  for (int i = 0; i < arguments.size(); ++i)
  {
    const QString& argument = arguments.at(i);
    const bool takesValue = argument == k_Table || argument == k_ExportTable || argument == k_Delimiter ||
                            argument == k_Notation || argument == k_Precision;
    if (!takesValue)
    {
      if (argument.startsWith(QStringLiteral("--")) || !options.file.isEmpty())
      {
        return QStringLiteral("'%1' is not an option of the table export").arg(argument);
      }
      options.file = argument;
      continue;
    }
    if (i + 1 >= arguments.size())
    {
      return QStringLiteral("%1 needs a value").arg(argument);
    }
    const QString value = arguments.at(++i);
    if (argument == k_Table)
    {
      options.paths += value.split(QLatin1Char(','), Qt::SkipEmptyParts);
    }
    else if (argument == k_ExportTable)
    {
      options.output = value;
    }
    else if (argument == k_Delimiter)
    {
      const QString lower = value.toLower();
      if (value == QStringLiteral(",") || lower == QStringLiteral("comma"))
      {
        options.delimiter = QStringLiteral(", "); // the spreadsheet's comma export
      }
      else if (value == QStringLiteral("\t") || lower == QStringLiteral("tab"))
      {
        options.delimiter = QStringLiteral("\t");
      }
      else
      {
        return QStringLiteral("--delimiter is ',' or tab, not '%1'").arg(value);
      }
    }
    else if (argument == k_Notation)
    {
      const QString lower = value.toLower();
      if (lower == QStringLiteral("auto"))
      {
        options.notation = VXSpreadsheetModel::Auto;
      }
      else if (lower == QStringLiteral("fixed"))
      {
        options.notation = VXSpreadsheetModel::Fixed;
      }
      else if (lower == QStringLiteral("scientific"))
      {
        options.notation = VXSpreadsheetModel::Scientific;
      }
      else
      {
        return QStringLiteral("--notation is auto, fixed or scientific, not '%1'").arg(value);
      }
    }
    else
    {
      bool ok = false;
      options.precision = value.toInt(&ok);
      if (!ok || options.precision < 0 || options.precision > 99)
      {
        return QStringLiteral("--precision is a whole number from 0 to 99, not '%1'").arg(value);
      }
    }
  }
  if (options.file.isEmpty())
  {
    return QStringLiteral("the table export needs a FILE");
  }
  if (options.paths.isEmpty())
  {
    return QStringLiteral("--table needs at least one data path");
  }
  if (options.output.isEmpty())
  {
    return QStringLiteral("--table needs --export-table OUT.csv");
  }
  return {};
}

} // namespace

bool ViewerTableExport::handles(const QStringList& arguments)
{
  return arguments.contains(k_Table) || arguments.contains(k_ExportTable);
}

int ViewerTableExport::run(const QStringList& arguments)
{
  Options options;
  const QString problem = parse(arguments, options);
  if (!problem.isEmpty())
  {
    return ViewerScriptInput::Complain(problem + QStringLiteral(" (see kestrix-viewer --help)"), 2);
  }
  int exitCode = 0;
  const std::optional<zr::core::DataStructure> loaded =
      ViewerScriptInput::LoadDataStructure(options.file, exitCode);
  if (!loaded.has_value())
  {
    return exitCode;
  }
  const zr::core::DataStructure& dataStructure = *loaded;

  VXBasicSpreadsheetModel model;
  model.setNotation(options.notation);
  model.setPrecision(options.precision);
  QStringList missing;
  for (const QString& text : options.paths)
  {
    const auto path = zr::core::DataPath::FromString(text.trimmed().toStdString());
    const auto array = path.has_value() ? dataStructure.getSharedDataAs<zr::core::IArray>(*path) : nullptr;
    if (array == nullptr)
    {
      missing << text;
      continue;
    }
    if (array->getNumberOfTuples() > model.rowLimit())
    {
      ViewerScriptInput::Complain(
          QStringLiteral("the array '%1' has %2 tuples, more than the %3 rows a table "
                         "can hold; only its first rows are written")
              .arg(text)
              .arg(array->getNumberOfTuples())
              .arg(model.rowLimit()),
          0);
    }
    model.addArray(array);
  }
  if (!missing.isEmpty())
  {
    return ViewerScriptInput::Complain(
        QStringLiteral("'%1' has no array at %2; its arrays are:\n  %3")
            .arg(options.file,
                 QStringLiteral("'") + missing.join(QStringLiteral("', '")) + QStringLiteral("'"),
                 ViewerScriptInput::ArrayPaths(dataStructure).join(QStringLiteral("\n  "))),
        2);
  }
  switch (VXSpreadsheetTableWriter::WriteFile(options.output, model, options.delimiter, true))
  {
  case VXSpreadsheetTableWriter::Status::OpenFailed:
    return ViewerScriptInput::Complain(
        QStringLiteral("cannot write '%1': the file could not be opened").arg(options.output), 1);
  case VXSpreadsheetTableWriter::Status::CommitFailed:
    return ViewerScriptInput::Complain(
        QStringLiteral("cannot write '%1': the file could not be saved").arg(options.output), 1);
  case VXSpreadsheetTableWriter::Status::Written:
    break;
  }
  return 0;
}
