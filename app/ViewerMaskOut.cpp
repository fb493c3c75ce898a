#include "app/ViewerMaskOut.h"

#include "app/ViewerFilterSteps.h"
#include "app/ViewerThresholdMask.h"
#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/IGeometry.h"
#include "data_bridge/zr_contract/KestrixReaderLoader.h"

#include <QFileInfo>
#include <QSet>
#include <QTextStream>

#include <vector>

namespace
{
const QString k_MaskOut = QStringLiteral("--mask-out");
const QString k_Geometry = QStringLiteral("--geometry");

int complain(const QString& message, int code)
{
  QTextStream err(stderr);
  err << "kestrix-viewer: " << message << '\n';
  return code;
}

struct Options
{
  QString file;
  QString output;
  QString geometry;
};

// The file, the output and the geometry; an empty text, or what is wrong with the command line.
QString parse(const QStringList& arguments, Options& options)
{
  QStringList files;
  for (int i = 0; i < arguments.size(); ++i)
  {
    const QString& argument = arguments[i];
    const int equals = argument.indexOf(QLatin1Char('='));
    const QString name =
        argument.startsWith(QStringLiteral("--")) && equals > 0 ? argument.left(equals) : argument;
    const bool takesValue =
        name == k_MaskOut || name == k_Geometry || ViewerFilterSteps::OptionNames().contains(name);
    if (!argument.startsWith(QStringLiteral("--")))
    {
      files << argument;
      continue;
    }
    if (!takesValue)
    {
      return QStringLiteral("%1 does not go with --mask-out").arg(name);
    }
    QString value;
    if (equals > 0 && name != argument)
    {
      value = argument.mid(equals + 1);
    }
    else if (i + 1 < arguments.size())
    {
      value = arguments[++i];
    }
    else
    {
      return QStringLiteral("%1 needs a value").arg(name);
    }
    if (name == k_MaskOut)
    {
      options.output = value;
    }
    else if (name == k_Geometry)
    {
      options.geometry = value;
    }
  }
  if (files.size() != 1)
  {
    return QStringLiteral("--mask-out takes one .kestrix file, not %1").arg(files.size());
  }
  options.file = files.front();
  if (options.output.isEmpty())
  {
    return QStringLiteral("--mask-out needs the file to write, OUT.kestrix");
  }
  return {};
}

struct Candidate
{
  zr::core::DataPath path;
  zr::core::IGeometry* geometry = nullptr;
};

// Every geometry once, by its first path.
std::vector<Candidate> geometries(zr::core::DataStructure& dataStructure)
{
  std::vector<Candidate> found;
  QSet<zr::core::IdType> seen;
  for (const zr::core::DataPath& path : dataStructure.getAllDataPaths())
  {
    auto* geometry = dataStructure.getDataAs<zr::core::IGeometry>(path);
    if (geometry != nullptr && !seen.contains(geometry->getId()))
    {
      seen.insert(geometry->getId());
      found.push_back({path, geometry});
    }
  }
  return found;
}

bool holdsAll(zr::core::IGeometry& geometry, const std::vector<ZR::ArrayThresholdRange>& thresholds)
{
  const zr::core::AttributeMatrix* cells = ViewerThresholdMask::CellAttributeMatrix(geometry);
  if (cells == nullptr)
  {
    return false;
  }
  for (const ZR::ArrayThresholdRange& threshold : thresholds)
  {
    if (!cells->contains(threshold.arrayName.toStdString()))
    {
      return false;
    }
  }
  return true;
}
} // namespace

bool ViewerMaskOut::handles(const QStringList& arguments)
{
  for (const QString& argument : arguments)
  {
    if (argument == k_MaskOut || argument.startsWith(k_MaskOut + QLatin1Char('=')))
    {
      return true;
    }
  }
  return false;
}

int ViewerMaskOut::run(const QStringList& arguments)
{
  Options options;
  const QString problem = parse(arguments, options);
  if (!problem.isEmpty())
  {
    return complain(problem + QStringLiteral(" (see kestrix-viewer --help)"), 2);
  }
  ViewerFilterSteps steps;
  QString stepError;
  if (!steps.parse(arguments, &stepError))
  {
    return complain(stepError, 2);
  }
  if (steps.thresholdSteps().empty() || !steps.onlyThresholds())
  {
    return complain(
        QStringLiteral("--mask-out takes one or more --threshold ARRAY:MIN:MAX and no other filter"), 2);
  }
  const QFileInfo info(options.file);
  if (!info.isFile())
  {
    return complain(QStringLiteral("cannot read '%1': no such file").arg(options.file), 1);
  }
  if (info.suffix().toLower() != QStringLiteral("kestrix"))
  {
    return complain(
        QStringLiteral("--mask-out works on the data structure of a .kestrix file; '%1' is not one")
            .arg(options.file),
        2);
  }
  // Values too large for memory are read from the input on demand while the output is written.
  if (QFileInfo(options.output).absoluteFilePath() == info.absoluteFilePath())
  {
    return complain(
        QStringLiteral("--mask-out writes a new file: '%1' is the file it reads").arg(options.output), 2);
  }
  auto loaded = zr::core::KESTRIX::LoadDataStructureFromFile(options.file.toStdString(), false);
  if (!loaded.valid())
  {
    const QString why = loaded.errors().empty() ? QStringLiteral("unknown reason")
                                                : QString::fromStdString(loaded.errors().front().message);
    return complain(QStringLiteral("cannot read '%1': %2").arg(options.file, why), 1);
  }
  zr::core::DataStructure dataStructure = std::move(loaded.value());

  // The records a threshold filter sends: a one-component array goes by its own name.
  std::vector<ZR::ArrayThresholdRange> thresholds;
  QStringList arrayNames;
  for (const ViewerFilterSteps::ThresholdStep& step : steps.thresholdSteps())
  {
    thresholds.push_back({step.array, step.minimum, step.maximum});
    arrayNames << step.array;
  }

  std::vector<Candidate> chosen;
  QStringList names;
  for (const Candidate& candidate : geometries(dataStructure))
  {
    const QString name = QString::fromStdString(candidate.geometry->getName());
    names << name;
    const bool named =
        name == options.geometry || QString::fromStdString(candidate.path.toString()) == options.geometry;
    if (options.geometry.isEmpty() ? holdsAll(*candidate.geometry, thresholds) : named)
    {
      chosen.push_back(candidate);
    }
  }
  if (chosen.empty())
  {
    if (!options.geometry.isEmpty())
    {
      return complain(QStringLiteral("'%1' has no geometry named '%2'; it has: %3")
                          .arg(options.file, options.geometry,
                               names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "))),
                      2);
    }
    return complain(QStringLiteral("no geometry of '%1' holds %2 in its cell data; its geometries: %3")
                        .arg(options.file, arrayNames.join(QStringLiteral(", ")),
                             names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "))),
                    2);
  }
  QTextStream out(stdout);
  for (const Candidate& candidate : chosen)
  {
    const ViewerThresholdMask::Outcome outcome =
        ViewerThresholdMask::AddMask(dataStructure, candidate.path, thresholds);
    if (!outcome.added)
    {
      return complain(outcome.message, 2);
    }
    out << outcome.message << '\n';
  }
  out.flush();
  const auto written =
      zr::core::KESTRIX::SaveDataStructureToFile(options.output.toStdString(), dataStructure);
  if (!written.valid())
  {
    const QString why = written.errors().empty() ? QStringLiteral("unknown reason")
                                                 : QString::fromStdString(written.errors().front().message);
    return complain(QStringLiteral("cannot write '%1': %2").arg(options.output, why), 1);
  }
  return 0;
}
