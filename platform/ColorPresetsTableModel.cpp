#include "platform/ColorPresetsTableModel.h"

#include <QColor>
#include <QImage>
#include <QPainter>

#include <algorithm>

namespace
{
QColor unitColor(float r, float g, float b)
{
  return QColor::fromRgbF(std::clamp(r, 0.0f, 1.0f), std::clamp(g, 0.0f, 1.0f), std::clamp(b, 0.0f, 1.0f));
}

// Colour of the x, r, g, b quadruples at position t; outside the nodes the end colours hold.
QColor interpolate(const std::vector<float>& points, double t)
{
  const size_t nodes = points.size() / 4;
  if (t <= points[0])
  {
    return unitColor(points[1], points[2], points[3]);
  }
  for (size_t i = 1; i < nodes; ++i)
  {
    const float* right = &points[4 * i];
    if (t <= right[0])
    {
      const float* left = right - 4;
      const double span = right[0] - left[0];
      const double f = span > 0.0 ? (t - left[0]) / span : 1.0;
      return unitColor(static_cast<float>(left[1] + f * (right[1] - left[1])),
                       static_cast<float>(left[2] + f * (right[2] - left[2])),
                       static_cast<float>(left[3] + f * (right[3] - left[3])));
    }
  }
  const float* last = &points[4 * (nodes - 1)];
  return unitColor(last[1], last[2], last[3]);
}
} // namespace

ColorPresetsTableModel::ColorPresetsTableModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

ColorPresetsTableModel::~ColorPresetsTableModel() = default;

int ColorPresetsTableModel::rowCount(const QModelIndex& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(m_Entries.size());
}

int ColorPresetsTableModel::columnCount(const QModelIndex& parent) const
{
  return parent.isValid() ? 0 : ColumnCount;
}

QVariant ColorPresetsTableModel::data(const QModelIndex& index, int role) const
{
  if (!index.isValid() || index.row() >= rowCount())
  {
    return {};
  }
  const Entry& entry = m_Entries[static_cast<size_t>(index.row())];
  if (index.column() == ColorBarColumn)
  {
    if (role == Qt::DecorationRole)
    {
      return entry.colorBar;
    }
    if (role == Qt::SizeHintRole)
    {
      return entry.colorBar.size();
    }
    if (role == Qt::ToolTipRole)
    {
      return QString::fromStdString(entry.preset.m_Name);
    }
  }
  else if (index.column() == NameColumn && (role == Qt::DisplayRole || role == Qt::ToolTipRole))
  {
    return QString::fromStdString(entry.preset.m_Name);
  }
  return {};
}

QVariant ColorPresetsTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
  {
    return QAbstractTableModel::headerData(section, orientation, role);
  }
  switch (section)
  {
  case ColorBarColumn:
    return QStringLiteral("Color Map");
  case NameColumn:
    return QStringLiteral("Name");
  default:
    return {};
  }
}

void ColorPresetsTableModel::setPresets(const std::vector<ColorPreset>& presets)
{
  beginResetModel();
  m_Entries.clear();
  for (const ColorPreset& preset : presets)
  {
    m_Entries.push_back({preset, CreateColorBar(preset)});
  }
  endResetModel();
}

void ColorPresetsTableModel::addPresets(const std::vector<ColorPreset>& presets)
{
  if (presets.empty())
  {
    return;
  }
  const int first = rowCount();
  beginInsertRows(QModelIndex(), first, first + static_cast<int>(presets.size()) - 1);
  for (const ColorPreset& preset : presets)
  {
    m_Entries.push_back({preset, CreateColorBar(preset)});
  }
  endInsertRows();
}

const ColorPresetsTableModel::ColorPreset& ColorPresetsTableModel::preset(int row) const
{
  return m_Entries.at(static_cast<size_t>(row)).preset;
}

QPixmap ColorPresetsTableModel::colorBar(int row) const
{
  return m_Entries.at(static_cast<size_t>(row)).colorBar;
}

int ColorPresetsTableModel::rowOfName(const QString& name) const
{
  const std::string wanted = name.toStdString();
  for (size_t row = 0; row < m_Entries.size(); ++row)
  {
    if (m_Entries[row].preset.m_Name == wanted)
    {
      return static_cast<int>(row);
    }
  }
  return -1;
}

QPixmap ColorPresetsTableModel::CreateColorBar(const ColorPreset& preset, const QSize& size)
{
  QImage image(size, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  const int width = size.width();
  const std::vector<float>& points = preset.m_RGBPoints;
  const std::vector<float>& indexed = preset.m_IndexedColors;
  if (points.size() >= 4)
  {
    const size_t usable = points.size() - points.size() % 4;
    const std::vector<float> nodes(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(usable));
    const double first = nodes.front();
    const double last = nodes[usable - 4];
    QPainter painter(&image);
    for (int x = 0; x < width; ++x)
    {
      const double t = width > 1 ? first + (last - first) * x / (width - 1) : first;
      painter.setPen(interpolate(nodes, t));
      painter.drawLine(x, 0, x, size.height() - 1);
    }
  }
  else if (indexed.size() >= 3)
  {
    const int count = static_cast<int>(indexed.size() / 3);
    QPainter painter(&image);
    for (int i = 0; i < count; ++i)
    {
      const int left = i * width / count;
      const int right = (i + 1) * width / count;
      painter.fillRect(left, 0, right - left, size.height(),
                       unitColor(indexed[3 * i], indexed[3 * i + 1], indexed[3 * i + 2]));
    }
  }
  return QPixmap::fromImage(image);
}
