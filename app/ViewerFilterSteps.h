#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

class VXBridgeObject;
class VXDataSource;
class VXFilter;
class VXPipeline;
class VXPipelineModel;

/**
 * @brief The visual filters the command line asks for, in the order given: each runs on the output of
 * the one before, under every data source of every file opened. The last output gets the data view;
 * the data sources' own views are hidden.
 *   --clip-plane OX,OY,OZ,NX,NY,NZ   --clip-box XMIN,XMAX,YMIN,YMAX,ZMIN,ZMAX   --slice OX,OY,OZ,NX,NY,NZ
 *   --threshold ARRAY[:COMPONENT]:MIN:MAX   --resample PX,PY,PZ   --decimate NX,NY,NZ
 */
class ViewerFilterSteps
{
public:
  /** @brief The options this class reads, each with one value. */
  static QStringList OptionNames();

  /** @brief Reads the filter options of the arguments in their order; false with a message for a bad value.
   */
  bool parse(const QStringList& arguments, QString* error);
  bool isEmpty() const { return m_Steps.empty(); }

  // One --threshold step: the array, its component, and the range of values kept.
  struct ThresholdStep
  {
    QString array;
    int component = 0;
    double minimum = 0.0;
    double maximum = 0.0;
  };
  /** @brief The --threshold steps in their order. */
  std::vector<ThresholdStep> thresholdSteps() const;
  /** @brief Whether every step is a --threshold. */
  bool onlyThresholds() const;
  /**
   * @brief Adds the chain under every data source of the bridge that has the arrays of its thresholds and
   * applies it. The data sources left out are named in the note; false with a message when none has them.
   * A threshold whose array a filter before it dropped leaves that data source without the chain: the
   * filters made for it are taken out of the pipeline tree again (through the model, when given) and its
   * own data views shown again.
   */
  bool applyTo(VXPipeline* pipeline, const VXBridgeObject& bridge, int viewType, QString* error,
               QString* note, VXPipelineModel* model = nullptr) const;
  /**
   * @brief Of the data sources given, those whose output has every threshold array. The others are named in
   * the note; when there are none, the error names the arrays there are.
   */
  QList<VXDataSource*> sourcesWithThresholdArrays(const QList<VXDataSource*>& sources, QString* error,
                                                  QString* note) const;
  /**
   * @brief Runs the chain under the data source with no pipeline and no window (for --list); the filters
   * are children of the source. Empty, with a message, when a step cannot run.
   */
  QList<VXFilter*> runWithoutView(VXDataSource* source, QString* error) const;
  /** @brief The arguments less the filter options and their values. */
  static QStringList WithoutFilterOptions(const QStringList& arguments);

private:
  enum class Kind
  {
    ClipPlane,
    ClipBox,
    Slice,
    Threshold,
    Resample,
    Decimate
  };
  struct Step
  {
    Kind kind = Kind::ClipPlane;
    std::array<double, 6> values = {0.0, 0.0, 0.0, 0.0, 0.0, 0.0};
    QString array;
    int component = 0;
  };

  bool parseStep(const QString& option, const QString& value, QString* error);
  static VXFilter* makeFilter(const Step& step);
  // The data set a step reads, for messages: the data source, or the output of the step before it.
  QString inputName(size_t index, const QString& sourceName) const;
  static bool configure(VXFilter* filter, const Step& step, const QString& inputName, QString* error);

  std::vector<Step> m_Steps;
};
