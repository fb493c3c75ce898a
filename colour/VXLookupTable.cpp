#include "colour/VXLookupTable.h"

#include "data_bridge/ZRVtkUtils.h"
#include "platform/ZRPreferences.h"

#include <nlohmann/json.hpp>

#include <QMap>
#include <QMessageBox>
#include <QPushButton>

#include <vtkVariant.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
const char* const k_IndexedLookupKey = "indexed_lookup";
const char* const k_RgbPosVectorKey = "rgb_pos_vector";
const char* const k_ColorSpaceKey = "color_space";
const char* const k_InvertedKey = "lut_is_inverted";
const char* const k_NanColorRKey = "lut_nan_color_r";
const char* const k_NanColorGKey = "lut_nan_color_g";
const char* const k_NanColorBKey = "lut_nan_color_b";
const char* const k_ColorPresetKey = "lut_color_preset";

constexpr int k_MaxColorSpace = 6;

QString valueText(double value)
{
  return QString::number(value, 'g', 6);
}

// Splits "x/r/g/b"; false unless there are exactly four numbers.
bool parseEntry(const QString& entry, VXLookupTable::RgbPos_t& node)
{
  const QStringList fields = entry.split(QLatin1Char('/'));
  if (fields.size() != 4)
  {
    return false;
  }
  bool ok[4] = {false, false, false, false};
  node = {fields[0].toDouble(&ok[0]), fields[1].toDouble(&ok[1]), fields[2].toDouble(&ok[2]),
          fields[3].toDouble(&ok[3])};
  return ok[0] && ok[1] && ok[2] && ok[3];
}
} // namespace

const std::vector<VXLookupTable::RgbPos_t> VXLookupTable::m_DefaultRgbPosVector = {
    {0.0, 0.231, 0.298, 0.753}, {0.5, 0.865, 0.865, 0.865}, {1.0, 0.706, 0.016, 0.149}};

VXLookupTable::VXLookupTable(QObject* parent)
    : QObject(parent)
    , m_ColorTransferFunction(vtkSmartPointer<vtkColorTransferFunction>::New())
{
  static const int s_MetaTypeId = qRegisterMetaType<vtkSmartPointer<vtkColorTransferFunction>>();
  Q_UNUSED(s_MetaTypeId)
  createDefaultRgbColorTransferFunction();
}

VXLookupTable::~VXLookupTable() = default;

vtkColorTransferFunction* VXLookupTable::getColorTransferFunction() const
{
  return m_ColorTransferFunction;
}

void VXLookupTable::setColorTransferFunction(vtkColorTransferFunction* transferFunction)
{
  m_ColorTransferFunction = transferFunction;
}

std::array<double, 2> VXLookupTable::getRange() const
{
  std::array<double, 2> range{};
  m_ColorTransferFunction->GetRange(range.data());
  return range;
}

std::vector<VXLookupTable::RgbPos_t> VXLookupTable::nodes() const
{
  std::vector<RgbPos_t> result(static_cast<size_t>(m_ColorTransferFunction->GetSize()));
  for (size_t i = 0; i < result.size(); ++i)
  {
    double node[6];
    m_ColorTransferFunction->GetNodeValue(static_cast<int>(i), node);
    result[i] = {node[0], node[1], node[2], node[3]};
  }
  return result;
}

void VXLookupTable::replaceNodes(const std::vector<RgbPos_t>& nodes)
{
  m_ColorTransferFunction->RemoveAllPoints();
  for (const RgbPos_t& node : nodes)
  {
    m_ColorTransferFunction->AddRGBPoint(node.x, node.r, node.g, node.b);
  }
  applyNanColor();
  m_ColorTransferFunction->Build();
}

void VXLookupTable::setRange(double min, double max)
{
  if (m_ColorTransferFunction->GetIndexedLookup() != 0 || !(min < max))
  {
    return; // an indexed table has no range; an empty or reversed range is no range
  }
  std::array<double, 2> oldRange = getRange();
  std::vector<RgbPos_t> current = nodes();
  if (current.size() == 1)
  {
    // A degenerate map recovers: the built-in nodes spread over the new range.
    current = m_DefaultRgbPosVector;
    oldRange = {current.front().x, current.back().x};
  }
  double oldSpan = oldRange[1] - oldRange[0];
  if (oldSpan == 0.0)
  {
    oldSpan = 1.0;
  }
  for (RgbPos_t& node : current)
  {
    node.x = (node.x - oldRange[0]) / oldSpan * (max - min) + min;
  }
  replaceNodes(current);
}

void VXLookupTable::setRange(const double* range)
{
  setRange(range[0], range[1]);
}

void VXLookupTable::addRgbPoint(const RgbPos_t& node)
{
  m_ColorTransferFunction->AddRGBPoint(node.x, node.r, node.g, node.b);
}

void VXLookupTable::addRgbPoint(double x, double r, double g, double b)
{
  m_ColorTransferFunction->AddRGBPoint(x, r, g, b);
}

void VXLookupTable::addRgbPoint(double x, const double* rgb)
{
  m_ColorTransferFunction->AddRGBPoint(x, rgb[0], rgb[1], rgb[2]);
}

void VXLookupTable::applyNanColor()
{
  m_ColorTransferFunction->SetNanColor(m_NanColor);
  m_ColorTransferFunction->SetBelowRangeColor(m_NanColor);
  m_ColorTransferFunction->SetAboveRangeColor(m_NanColor);
}

void VXLookupTable::setNANColor(const double* rgb)
{
  std::copy(rgb, rgb + 3, m_NanColor);
  applyNanColor();
  m_ColorTransferFunction->Build();
}

void VXLookupTable::setNANColor(const QColor& color)
{
  const double rgb[3] = {color.redF(), color.greenF(), color.blueF()};
  setNANColor(rgb);
}

QColor VXLookupTable::getNANColor() const
{
  return QColor::fromRgbF(m_NanColor[0], m_NanColor[1], m_NanColor[2], 1.0);
}

bool VXLookupTable::isInverted() const
{
  return m_Inverted;
}

void VXLookupTable::invert()
{
  const std::vector<RgbPos_t> current = nodes();
  std::vector<RgbPos_t> mirrored = current;
  const size_t count = current.size();
  for (size_t i = 0; i < count; ++i)
  {
    const RgbPos_t& colour = current[count - 1 - i];
    mirrored[i] = {current[i].x, colour.r, colour.g, colour.b};
  }
  // Annotations stay with their values: only the colours move.
  replaceNodes(mirrored);
  m_Inverted = !m_Inverted;
}

QList<QString> VXLookupTable::getColorPresetArray() const
{
  return m_ColorPresetArray;
}

void VXLookupTable::copy(const VXLookupTable& other)
{
  vtkColorTransferFunction* source = other.m_ColorTransferFunction;
  m_ColorTransferFunction->RemoveAllPoints();
  m_ColorTransferFunction->ResetAnnotations();
  m_ColorTransferFunction->SetIndexedLookup(source->GetIndexedLookup());
  for (const RgbPos_t& node : other.nodes())
  {
    addRgbPoint(node);
  }
  for (vtkIdType i = 0; i < source->GetNumberOfAnnotatedValues(); ++i)
  {
    m_ColorTransferFunction->SetAnnotation(source->GetAnnotatedValue(i), source->GetAnnotation(i));
  }
  m_ColorTransferFunction->SetColorSpace(std::clamp(source->GetColorSpace(), 0, k_MaxColorSpace));
  std::copy(other.m_NanColor, other.m_NanColor + 3, m_NanColor);
  applyNanColor();
  m_ColorTransferFunction->Build();
  m_Inverted = other.m_Inverted;
  m_ColorPresetArray = other.m_ColorPresetArray;
}

VXLookupTable* VXLookupTable::deepCopy() const
{
  auto* table = new VXLookupTable(nullptr);
  table->copy(*this);
  return table;
}

bool VXLookupTable::equals(const VXLookupTable* other) const
{
  if (other == nullptr)
  {
    return false;
  }
  const std::vector<RgbPos_t> mine = nodes();
  const std::vector<RgbPos_t> theirs = other->nodes();
  if (mine.size() != theirs.size() || getRange() != other->getRange())
  {
    return false;
  }
  // Plain == on doubles: a NaN anywhere makes the tables differ.
  for (size_t i = 0; i < mine.size(); ++i)
  {
    if (!(mine[i].x == theirs[i].x && mine[i].r == theirs[i].r && mine[i].g == theirs[i].g &&
          mine[i].b == theirs[i].b))
    {
      return false;
    }
  }
  return true;
}

QString VXLookupTable::PresetEntryText(const RgbPos_t& node)
{
  return QStringLiteral("%1/%2/%3/%4")
      .arg(valueText(node.x), valueText(node.r), valueText(node.g), valueText(node.b));
}

void VXLookupTable::parseRgbJson(const ColorPreset& preset)
{
  m_ColorTransferFunction->SetIndexedLookup(0);
  m_ColorTransferFunction->ResetAnnotations();
  m_ColorPresetArray.clear();
  const std::array<double, 2> range = getRange();
  m_ColorTransferFunction->RemoveAllPoints();
  const std::vector<float>& points = preset.m_RGBPoints;
  for (size_t i = 0; i + 3 < points.size(); i += 4)
  {
    const RgbPos_t node{points[i], points[i + 1], points[i + 2], points[i + 3]};
    addRgbPoint(node);
    m_ColorPresetArray << PresetEntryText(node);
  }
  m_ColorTransferFunction->SetColorSpace(VTK_CTF_RGB);
  setRange(range[0], range[1]); // a new preset keeps the current range
}

void VXLookupTable::parseRgbArray(const QList<QString>& presetArray)
{
  const std::array<double, 2> range = getRange();
  RgbPos_t first;
  if (presetArray.isEmpty() || presetArray.front() == k_DefaultPresetName ||
      !parseEntry(presetArray.front(), first))
  {
    createDefaultRgbColorTransferFunction();
    setRange(range[0], range[1]);
    return;
  }
  m_ColorTransferFunction->SetIndexedLookup(0);
  m_ColorTransferFunction->ResetAnnotations();
  m_ColorTransferFunction->RemoveAllPoints();
  for (const QString& entry : presetArray)
  {
    RgbPos_t node;
    if (parseEntry(entry, node))
    {
      addRgbPoint(node);
    }
  }
  m_ColorPresetArray = presetArray;
  applyNanColor();
  setRange(range[0], range[1]);
  m_ColorTransferFunction->Build();
}

void VXLookupTable::createDefaultRgbColorTransferFunction()
{
  parseRgbJson(ZRPreferences::Instance()->getDefaultColorPreset());
  if (m_ColorTransferFunction->GetSize() == 0)
  {
    replaceNodes(m_DefaultRgbPosVector); // a default preset without nodes
  }
  m_ColorPresetArray = {k_DefaultPresetName};
  applyNanColor();
  m_ColorTransferFunction->Build();
}

std::set<double> VXLookupTable::knownValues() const
{
  std::set<double> values;
  if (m_ColorTransferFunction->GetIndexedLookup() != 0 &&
      m_ColorTransferFunction->GetNumberOfAnnotatedValues() > 0)
  {
    for (vtkIdType i = 0; i < m_ColorTransferFunction->GetNumberOfAnnotatedValues(); ++i)
    {
      values.insert(m_ColorTransferFunction->GetAnnotatedValue(i).ToDouble());
    }
    return values;
  }
  for (const RgbPos_t& node : nodes())
  {
    values.insert(node.x);
  }
  return values;
}

void VXLookupTable::parseIndexedJson(const ColorPreset& preset)
{
  parseIndexedJson<double>(preset, knownValues());
}

template<typename T>
void VXLookupTable::parseIndexedJson(const ColorPreset& preset, const std::set<T>& uniqueValues)
{
  const std::vector<float>& colours = preset.m_IndexedColors;
  const size_t colourCount = colours.size() / 3;
  m_ColorTransferFunction->RemoveAllPoints();
  m_ColorTransferFunction->ResetAnnotations();
  m_ColorTransferFunction->SetIndexedLookup(1);
  m_ColorPresetArray.clear();

  QMap<double, std::pair<vtkColor3d, QString>> annotated;
  const bool hasAnnotations = preset.m_Annotations.is_array() && !preset.m_Annotations.empty();
  if (hasAnnotations)
  {
    const nlohmann::json& list = preset.m_Annotations;
    for (size_t k = 0; 2 * k + 1 < list.size() && k < colourCount; ++k)
    {
      const nlohmann::json& value = list[2 * k];
      const nlohmann::json& label = list[2 * k + 1];
      bool ok = false;
      const double number =
          value.is_number()
              ? value.get<double>()
              : QString::fromStdString(value.is_string() ? value.get<std::string>() : "").toDouble(&ok);
      if (!value.is_number() && !ok)
      {
        continue;
      }
      const QString text =
          QString::fromStdString(label.is_string() ? label.get<std::string>() : label.dump());
      annotated.insert(number, {vtkColor3d(colours[3 * k], colours[3 * k + 1], colours[3 * k + 2]), text});
    }
  }

  bool asked = false;
  MissingValuesChoice choice = MissingValuesChoice::UseNanColor;
  size_t nextColour = 0;
  for (const T& uniqueValue : uniqueValues)
  {
    const double value = static_cast<double>(uniqueValue);
    const QString text = valueText(value);
    vtkColor3d colour;
    QString label = text;
    if (!hasAnnotations)
    {
      if (colourCount == 0)
      {
        colour = vtkColor3d(m_NanColor[0], m_NanColor[1], m_NanColor[2]);
      }
      else
      {
        const size_t index = nextColour++ % colourCount;
        colour = vtkColor3d(colours[3 * index], colours[3 * index + 1], colours[3 * index + 2]);
      }
    }
    else if (annotated.contains(value))
    {
      colour = annotated.value(value).first;
      label = annotated.value(value).second;
    }
    else
    {
      if (!asked)
      {
        choice = askMissingValuesChoice();
        asked = true;
      }
      if (choice == MissingValuesChoice::Cancel)
      {
        m_ColorTransferFunction->RemoveAllPoints();
        m_ColorTransferFunction->ResetAnnotations();
        m_ColorPresetArray.clear();
        return;
      }
      colour = choice == MissingValuesChoice::UseNanColor
                   ? vtkColor3d(m_NanColor[0], m_NanColor[1], m_NanColor[2])
                   : ZRVtk::utils::GetVtkColor3dFromQColor(ZRVtk::utils::GenerateRandomColor());
    }
    const RgbPos_t node{value, colour[0], colour[1], colour[2]};
    addRgbPoint(node);
    m_ColorTransferFunction->SetAnnotation(vtkVariant(value), label.toStdString());
    m_ColorPresetArray << PresetEntryText(node);
  }
  applyNanColor();
  m_ColorTransferFunction->Build();
  Q_EMIT syncIndexedColorMap(m_ColorTransferFunction);
}

template void VXLookupTable::parseIndexedJson<double>(const ColorPreset&, const std::set<double>&);

void VXLookupTable::parseIndexedArray(const QList<QString>& presetArray)
{
  const std::set<double> values = knownValues();
  m_ColorTransferFunction->SetIndexedLookup(1);
  RgbPos_t first;
  if (presetArray.isEmpty() || presetArray.front() == k_DefaultPresetName ||
      !parseEntry(presetArray.front(), first))
  {
    createDefaultIndexedColorTransferFunction<double>(values);
    return;
  }
  m_ColorTransferFunction->RemoveAllPoints();
  m_ColorTransferFunction->ResetAnnotations();
  for (const QString& entry : presetArray)
  {
    RgbPos_t node;
    if (parseEntry(entry, node))
    {
      addRgbPoint(node);
      m_ColorTransferFunction->SetAnnotation(vtkVariant(node.x), valueText(node.x).toStdString());
    }
  }
  m_ColorPresetArray = presetArray;
  applyNanColor();
  m_ColorTransferFunction->Build();
}

template<typename T>
void VXLookupTable::createDefaultIndexedColorTransferFunction(const std::set<T>& values)
{
  const std::vector<QColor>& palette = ZRVtk::utils::k_ZRColorPreset1;
  m_ColorTransferFunction->RemoveAllPoints();
  m_ColorTransferFunction->ResetAnnotations();
  m_ColorTransferFunction->SetIndexedLookup(1);
  size_t index = 0;
  for (const T& uniqueValue : values)
  {
    const double value = static_cast<double>(uniqueValue);
    const QColor& colour = palette[index++ % palette.size()];
    addRgbPoint(value, colour.redF(), colour.greenF(), colour.blueF());
    m_ColorTransferFunction->SetAnnotation(vtkVariant(value), valueText(value).toStdString());
  }
  m_ColorPresetArray = {k_DefaultPresetName};
  applyNanColor();
  m_ColorTransferFunction->Build();
}

template void VXLookupTable::createDefaultIndexedColorTransferFunction<double>(const std::set<double>&);

VXLookupTable::MissingValuesChoice VXLookupTable::askMissingValuesChoice()
{
  QMessageBox box(
      QMessageBox::Question, QStringLiteral("Missing annotated values in color map"),
      QStringLiteral("Some of the data in the active data array does not appear in the selected color "
                     "map. Would you like to use the NaN color for the missing values, auto generate "
                     "new colors for the missing values, or cancel and select a new color map?"));
  QPushButton* nanButton = box.addButton(QStringLiteral("Use NaN Color"), QMessageBox::AcceptRole);
  QPushButton* generateButton = box.addButton(QStringLiteral("Generate New Colors"), QMessageBox::AcceptRole);
  box.addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
  box.exec();
  if (box.clickedButton() == nanButton)
  {
    return MissingValuesChoice::UseNanColor;
  }
  if (box.clickedButton() == generateButton)
  {
    return MissingValuesChoice::GenerateNewColors;
  }
  return MissingValuesChoice::Cancel;
}

void VXLookupTable::write(nlohmann::json& json) const
{
  json[k_IndexedLookupKey] = m_ColorTransferFunction->GetIndexedLookup();
  nlohmann::json nodeList = nlohmann::json::array();
  for (const RgbPos_t& node : nodes())
  {
    nodeList.push_back({node.x, node.r, node.g, node.b});
  }
  json[k_RgbPosVectorKey] = nodeList;
  json[k_ColorSpaceKey] = m_ColorTransferFunction->GetColorSpace();
  json[k_InvertedKey] = m_Inverted;
  json[k_NanColorRKey] = m_NanColor[0];
  json[k_NanColorGKey] = m_NanColor[1];
  json[k_NanColorBKey] = m_NanColor[2];
  nlohmann::json presetList = nlohmann::json::array();
  for (const QString& entry : m_ColorPresetArray)
  {
    presetList.push_back(entry.toStdString());
  }
  json[k_ColorPresetKey] = presetList;
}

void VXLookupTable::read(const nlohmann::json& json)
{
  m_ColorTransferFunction->RemoveAllPoints();
  m_ColorTransferFunction->ResetAnnotations();
  applyNanColor();
  if (json.contains(k_IndexedLookupKey))
  {
    m_ColorTransferFunction->SetIndexedLookup(json.at(k_IndexedLookupKey).get<int>());
  }
  if (json.contains(k_RgbPosVectorKey))
  {
    for (const nlohmann::json& node : json.at(k_RgbPosVectorKey))
    {
      const std::array<double, 4> values = node.get<std::array<double, 4>>();
      addRgbPoint(values[0], values[1], values[2], values[3]);
    }
  }
  if (json.contains(k_ColorSpaceKey))
  {
    m_ColorTransferFunction->SetColorSpace(
        std::clamp(json.at(k_ColorSpaceKey).get<int>(), 0, k_MaxColorSpace));
  }
  if (json.contains(k_InvertedKey))
  {
    m_Inverted = json.at(k_InvertedKey).get<bool>();
  }
  const char* const nanKeys[3] = {k_NanColorRKey, k_NanColorGKey, k_NanColorBKey};
  for (int i = 0; i < 3; ++i)
  {
    if (json.contains(nanKeys[i]))
    {
      m_NanColor[i] = json.at(nanKeys[i]).get<double>();
    }
  }
  if (json.contains(k_ColorPresetKey))
  {
    m_ColorPresetArray.clear();
    for (const nlohmann::json& entry : json.at(k_ColorPresetKey))
    {
      m_ColorPresetArray << QString::fromStdString(entry.get<std::string>());
    }
  }
  // Categories are looked up by annotation: each node of an indexed table names its value.
  if (m_ColorTransferFunction->GetIndexedLookup() != 0)
  {
    for (const RgbPos_t& node : nodes())
    {
      m_ColorTransferFunction->SetAnnotation(vtkVariant(node.x), valueText(node.x).toStdString());
    }
  }
  applyNanColor();
  m_ColorTransferFunction->Build();
}
