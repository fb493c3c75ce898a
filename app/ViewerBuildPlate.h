#pragma once

#include <nlohmann/json.hpp>

#include <QList>
#include <QString>

class VXAbstractViewWidget;
class VXBuildPlateAnnotationSource;
class VXPipeline;

/**
 * The build plate of the command line: --build-plate square:W,D | circle:R, and --plate-spacing S for
 * the major lines (minor lines at a fifth of it). A square spans 0..W by 0..D from the origin; a circle
 * lies about the origin.
 */
class ViewerBuildPlate
{
public:
  /** False, with the reason, when the shape or the spacing does not parse. */
  bool parse(const QString& shape, const QString& spacing, QString* error);
  bool isSet() const { return m_Set; }
  /** The settings of one plate instance, in the keys of its state record. */
  nlohmann::json instanceState() const;
  /** One plate annotation with an instance in each of the views. */
  VXBuildPlateAnnotationSource* addTo(VXPipeline* pipeline, const QList<VXAbstractViewWidget*>& views) const;

private:
  bool m_Set = false;
  nlohmann::json m_State = nlohmann::json::object();
};
