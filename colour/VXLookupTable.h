#pragma once

#include "data_bridge/zr_contract/ColorPreset.h"

#include <nlohmann/json_fwd.hpp>

#include <QColor>
#include <QList>
#include <QObject>
#include <QString>

#include <vtkColorTransferFunction.h>
#include <vtkSmartPointer.h>

#include <array>
#include <set>
#include <vector>

/**
 * The colour map of a data view: a vtkColorTransferFunction plus what it lacks. It remembers the
 * preset it came from as text entries ("x/r/g/b"), keeps an inverted flag, uses one NaN colour also
 * for values below and above the range, changes its range without changing the map's shape, and
 * has a categorical ("indexed") mode in which each distinct value has a colour and an annotation.
 */
class VXLookupTable : public QObject
{
  Q_OBJECT

public:
  using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

  struct RgbPos_t
  {
    double x = 0.0;
    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
  };

  /** @brief What to do with category values that an annotated preset does not name. */
  enum class MissingValuesChoice
  {
    UseNanColor,
    GenerateNewColors,
    Cancel
  };

  static const std::vector<RgbPos_t> m_DefaultRgbPosVector;
  static inline const QString k_DefaultPresetName = QStringLiteral("Default");
  static constexpr int k_MaxNumberIndexedColors = 32;

  explicit VXLookupTable(QObject* parent = nullptr);
  ~VXLookupTable() override;

  vtkColorTransferFunction* getColorTransferFunction() const;
  void setColorTransferFunction(vtkColorTransferFunction* transferFunction);

  std::array<double, 2> getRange() const;
  /** @brief Moves the nodes into the new range keeping their relative places; no-op when indexed or empty. */
  void setRange(double min, double max);
  void setRange(const double* range);

  void addRgbPoint(const RgbPos_t& node);
  void addRgbPoint(double x, double r, double g, double b);
  void addRgbPoint(double x, const double* rgb);

  /** @brief The colour of NaN values, and of values below and above the range. */
  void setNANColor(const double* rgb);
  void setNANColor(const QColor& color);
  QColor getNANColor() const;

  bool isInverted() const;
  /** @brief Mirrors the colours over the nodes; the positions stay, so uneven maps stay uneven. */
  void invert();

  QList<QString> getColorPresetArray() const;

  void copy(const VXLookupTable& other);
  /** @brief A new table without parent holding a copy of this one. */
  VXLookupTable* deepCopy() const;
  bool equals(const VXLookupTable* other) const;

  void parseRgbJson(const ColorPreset& preset);
  void parseRgbArray(const QList<QString>& presetArray);
  void parseIndexedJson(const ColorPreset& preset);
  template<typename T>
  void parseIndexedJson(const ColorPreset& preset, const std::set<T>& uniqueValues);
  void parseIndexedArray(const QList<QString>& presetArray);
  void createDefaultRgbColorTransferFunction();
  template<typename T>
  void createDefaultIndexedColorTransferFunction(const std::set<T>& values);

  void write(nlohmann::json& json) const;
  void read(const nlohmann::json& json);

  /** @brief One preset array entry: "x/r/g/b", each number with 6 significant digits. */
  static QString PresetEntryText(const RgbPos_t& node);

Q_SIGNALS:
  void syncIndexedColorMap(vtkSmartPointer<vtkColorTransferFunction> ctf);

protected:
  /** @brief Asks the user once per rebuild; hosts and tests without a user answer otherwise. */
  virtual MissingValuesChoice askMissingValuesChoice();

private:
  std::vector<RgbPos_t> nodes() const;
  void replaceNodes(const std::vector<RgbPos_t>& nodes);
  void applyNanColor();
  // The category values the table holds: its annotated values when indexed, else its positions.
  std::set<double> knownValues() const;

  bool m_Inverted = false;
  double m_NanColor[3] = {0.5, 0.75, 0.0};
  QList<QString> m_ColorPresetArray;
  vtkSmartPointer<vtkColorTransferFunction> m_ColorTransferFunction;
};

Q_DECLARE_METATYPE(vtkSmartPointer<vtkColorTransferFunction>)
