#pragma once

#include "filters/VXFilter.h"

#include <vtkSmartPointer.h>
#include <vtkThreshold.h>

#include <QPointer>
#include <QString>

#include <array>
#include <vector>

class vtkFieldData;
class vtkThreshold;
class VXFThresholdFilterWidget;

/** Keeps the cells whose value of one array component lies in a range. */
class VXFThreshold : public VXFilter
{
  Q_OBJECT

public:
  // One component of one array of the input, as the scalars combo offers it.
  struct DataArrayNameInfo
  {
    QString dataSetName;
    QString displayName;
    int numberOfComponents = 1;
    int component = 0;
    std::array<double, 2> dataRange = {0.0, 0.0};
    std::array<double, 2> userRange = {0.0, 0.0};

    // The ranges take no part: a reload matches entries by what they stand for.
    bool operator==(const DataArrayNameInfo& other) const
    {
      return dataSetName == other.dataSetName && displayName == other.displayName &&
             numberOfComponents == other.numberOfComponents && component == other.component;
    }
  };

  explicit VXFThreshold(QObject* parent = nullptr);
  ~VXFThreshold() override;

  void write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const override;
  void read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) override;
  QString humanTypeName() const override;
  QString typeName() const override;
  vtkAlgorithmOutput* outputPort() const override;
  void initializeSettingsWidget() override;
  void setupFilter() override;
  void setInputPort(vtkAlgorithmOutput* port) override;
  // read() ends with an Apply: the ranges it takes are data specific.
  bool appliesOnRead() const override { return true; }

  const std::vector<DataArrayNameInfo>& getDataArrayNameInfos() const { return m_ArrayInfos; }
  void setActiveArrayInfoIndex(size_t index);
  size_t getActiveArrayInfoIndex() const { return m_ActiveIndex; }
  // The active entry; an empty entry when the input has no arrays.
  DataArrayNameInfo getActiveArrayInfo() const;
  void updateActiveArrayInfo(DataArrayNameInfo& info);
  void initializeArrayNameInfos();
  vtkThreshold* algorithm() const { return m_Threshold; }

  // The answers to the question whether a host filter takes the thresholds above and below this one.
  enum class RelativesAnswer
  {
    JustThisFilter,
    AllFilters,
    Cancel
  };

public Q_SLOTS:
  void applyFilter() override;
  void receivePipelineOutputReloaded() override;
  void createKESTRIXFilterFromVXFilter();

protected:
  // The modal boxes of createKESTRIXFilterFromVXFilter; tests and hosts without a user answer them
  // differently.
  virtual RelativesAnswer askIncludeRelatives(const QString& title, const QString& text);
  virtual void showWarning(const QString& title, const QString& text);

private:
  void appendArrayInfos(vtkFieldData* fieldData);

  vtkSmartPointer<vtkThreshold> m_Threshold;
  QPointer<VXFThresholdFilterWidget> m_SettingsForm;
  std::vector<DataArrayNameInfo> m_ArrayInfos;
  size_t m_ActiveIndex = 0;
};
