#pragma once

#include <QString>

namespace ZR
{
/**
 * What the visualization needs of the host's pipeline controller: a display name for the pipeline's
 * data structure, the pipeline's identity and the path of its output file.
 */
class IPipelineController
{
public:
  virtual ~IPipelineController() = default;

  virtual QString getDisplayName() const = 0;
  // Stable across runs of the same pipeline; only its equality matters.
  virtual QString getPipelineUuid() const = 0;
  virtual QString getOutputFilePath() const = 0;
  // Whether the host shows a spreadsheet window for this pipeline.
  virtual bool isSpreadsheetWindowShown() const { return false; }
};
} // namespace ZR
