#include "data_views/VXRepresentation.h"

#include <map>

namespace
{
std::map<VXRepresentation::Type, VXRepresentation::Factory>& factories()
{
  static std::map<VXRepresentation::Type, VXRepresentation::Factory> s_Factories;
  return s_Factories;
}
} // namespace

const QMap<QString, VXRepresentation::Type> VXRepresentation::k_RepresentationStringToType = {
    {QStringLiteral("None"), None},
    {QStringLiteral("Outline"), Outline},
    {QStringLiteral("Points"), Points},
    {QStringLiteral("Wireframe"), Wireframe},
    {QStringLiteral("Surface"), Surface},
    {QStringLiteral("Volume"), Volume},
    {QStringLiteral("2D Image/Slice"), ImageSlice}};

const QMap<VXRepresentation::Type, QString> VXRepresentation::k_RepresentationTypeToString = {
    {None, QStringLiteral("None")},
    {Outline, QStringLiteral("Outline")},
    {Points, QStringLiteral("Points")},
    {Wireframe, QStringLiteral("Wireframe")},
    {Surface, QStringLiteral("Surface")},
    {Volume, QStringLiteral("Volume")},
    {ImageSlice, QStringLiteral("2D Image/Slice")}};

void VXRepresentation::RegisterType(Type type, Factory factory)
{
  factories()[type] = std::move(factory);
}

VXRepresentation* VXRepresentation::Create(Type type, QObject* parent)
{
  const auto it = factories().find(type);
  return it != factories().end() && it->second ? it->second(parent) : nullptr;
}

bool VXRepresentation::IsRegistered(Type type)
{
  return factories().count(type) > 0;
}

VXRepresentation::VXRepresentation(QObject* parent)
    : VXCoreObject(parent)
{
}

VXRepresentation::~VXRepresentation() = default;

void VXRepresentation::initializeViewWidgetSplits(vtkAlgorithmOutput* /*port*/, bool /*visible*/) {}

void VXRepresentation::setParentSource(VXCoreObject* parentSource)
{
  m_ParentSource = parentSource;
  setParent(parentSource);
  updatePath();
}
