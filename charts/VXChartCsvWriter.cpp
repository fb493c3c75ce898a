#include "charts/VXChartCsvWriter.h"

#include "charts/VXChart.h"

#include <fmt/format.h>

#include <cmath>
#include <fstream>

namespace
{
// A cell with a comma, quote or line break is quoted, its quotes doubled.
std::string Cell(const std::string& text)
{
  if (text.find_first_of(",\"\n\r") == std::string::npos)
  {
    return text;
  }
  std::string quoted = "\"";
  for (char c : text)
  {
    quoted += c;
    if (c == '"')
    {
      quoted += '"';
    }
  }
  return quoted + "\"";
}

std::string Number(double value)
{
  return std::isnan(value) ? std::string("nan") : fmt::format("{}", value);
}
} // namespace

VXChartCsvWriter::Status VXChartCsvWriter::WriteFile(const QString& path, const VXChart& chart)
{
  const std::vector<std::string> names = chart.seriesNames();
  if (names.empty())
  {
    return Status::NoData;
  }
  std::ofstream out(path.toStdString(), std::ios::out | std::ios::trunc);
  if (!out.is_open())
  {
    return Status::OpenFailed;
  }
  const std::vector<std::string>& categories = chart.getCategories();
  const std::vector<double> x = chart.getSeriesValues(VXChart::k_XSeriesName);
  std::vector<std::vector<double>> columns;
  std::size_t rows = categories.empty() ? x.size() : categories.size();
  out << (categories.empty() ? "X" : "Category");
  for (const std::string& name : names)
  {
    out << ',' << Cell(name);
    columns.push_back(chart.getSeriesValues(name));
    rows = std::max(rows, columns.back().size());
  }
  out << '\n';
  for (std::size_t row = 0; row < rows; ++row)
  {
    if (!categories.empty())
    {
      out << (row < categories.size() ? Cell(categories[row]) : std::string());
    }
    else
    {
      out << (row < x.size() ? Number(x[row]) : std::to_string(row));
    }
    for (const auto& column : columns)
    {
      out << ',';
      if (row < column.size())
      {
        out << Number(column[row]);
      }
    }
    out << '\n';
  }
  out.flush();
  return out.good() ? Status::Written : Status::WriteFailed;
}

QString VXChartCsvWriter::Message(Status status, const QString& path)
{
  switch (status)
  {
  case Status::NoData:
    return QStringLiteral("No data to export.");
  case Status::OpenFailed:
    return QStringLiteral("Could not open '%1' for writing.").arg(path);
  case Status::WriteFailed:
    return QStringLiteral("Could not write all of '%1'.").arg(path);
  case Status::Written:
    break;
  }
  return {};
}
