// The settings panel of the outline view, and the pieces of it the levels above reuse.
#include "data_views/VXOutlineRepPimpl.h"
#include "data_views/VXRepresentation.h"
#include "data_views/ZRVtkLibDocumentation.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "pipeline/VXDataSource.h"
#include "platform/ZRCheckBox.h"
#include "platform/ZRColorButton.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRLineEdit.h"
#include "platform/ZRSlider.h"
#include "platform/ZRStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace Doc = ZRVtkLib::Documentation;
namespace Utils = ZRVtkModule::utils;

namespace
{
QVBoxLayout* sectionLayout(QWidget* section)
{
  return qobject_cast<QVBoxLayout*>(section->layout());
}

template<class Widget, class Value>
void setBlocked(Widget* widget, void (Widget::*setter)(Value), Value value)
{
  if (widget != nullptr)
  {
    const QSignalBlocker blocker(widget);
    (widget->*setter)(value);
  }
}

void setChecked(QAbstractButton* button, bool checked)
{
  if (button != nullptr)
  {
    const QSignalBlocker blocker(button);
    button->setChecked(checked);
  }
}
} // namespace

QString VXOutlineRepPimpl::helpAnchor() const
{
  return QStringLiteral("#") + levelName() + QStringLiteral("-representation");
}

void VXOutlineRepPimpl::initializeSettingsWidget()
{
  VXRepresentationPimpl::initializeSettingsWidget();
  QVBoxLayout* content = settingsContentLayout();
  QWidget* parent = content->parentWidget();
  addColoringControls(
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Coloring"))));
  addStylingControls(sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Styling"))));
  addAnnotationControls(
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Annotations"))));
  addDecimationControls(
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Decimation"), false)));
  addExtraSections(content);
  content->addStretch(1);
  addHelpToolTipControls();
  updateSettingsControls();
}

void VXOutlineRepPimpl::addColoringControls(QVBoxLayout* layout)
{
  addDataSourceControls(layout);
  addSolidColorControls(layout);
}

void VXOutlineRepPimpl::addStylingControls(QVBoxLayout* layout)
{
  addOpacityControls(layout);
  addEdgesControls(layout);
}

void VXOutlineRepPimpl::addAnnotationControls(QVBoxLayout* layout)
{
  addDataAxesGridControls(layout);
  addHelpToolTip(m_DataGridCheckBox, Doc::LevelAnchor(levelName(), Doc::k_DataAxesGrid),
                 QStringLiteral("Draws axes with ticks and labels around the bounds of this item."));
}

void VXOutlineRepPimpl::addExtraSections(QVBoxLayout* /*content*/) {}

void VXOutlineRepPimpl::addDataSourceControls(QVBoxLayout* layout)
{
  QWidget* parent = layout->parentWidget();
  auto* row = new QHBoxLayout();
  row->setContentsMargins(2, 2, 2, 2);
  row->setSpacing(2);
  row->addWidget(new QLabel(QStringLiteral("DataSource"), parent));
  m_DetachCheckBox = new ZRCheckBox(QStringLiteral("Enable Separate Color Map"), parent);
  m_DetachCheckBox->setToolTip(Utils::HtmlToolTip(
      QStringLiteral("Color this view with its own settings instead of those of its data source")));
  connect(m_DetachCheckBox.data(), &QCheckBox::toggled, this, &VXOutlineRepPimpl::onDetachColorSettings);
  row->addWidget(m_DetachCheckBox);
  m_ParentSourceButton = Utils::GenerateSettingsToolButton(
      parent, Utils::HtmlToolTip(QStringLiteral("Go to the color settings of the data source")));
  connect(m_ParentSourceButton.data(), &QPushButton::clicked, this,
          [this]()
          {
            if (auto* source =
                    qobject_cast<VXDataSource*>(m_Owner != nullptr ? m_Owner->parentDataSource() : nullptr))
            {
              Q_EMIT source->goToParentColorSettings();
            }
          });
  row->addWidget(m_ParentSourceButton);
  row->addStretch(1);
  layout->addLayout(row);
  addHelpToolTip(
      m_DetachCheckBox, Doc::LevelAnchor(levelName(), Doc::k_SeparateColorMap),
      QStringLiteral("A separate color map is edited here; otherwise the data source's colors apply."));
}

void VXOutlineRepPimpl::addSolidColorControls(QVBoxLayout* layout)
{
  m_SolidColorButton = Utils::GenerateEditSolidColorButton(m_SolidColor, layout, m_SolidColorLabel,
                                                           layout->parentWidget(), true);
  connect(m_SolidColorButton.data(), &ZRColorButton::colorChanged, this, &VXOutlineRepPimpl::setSolidColor);
  addHelpToolTip(m_SolidColorButton, Doc::LevelAnchor(levelName(), Doc::k_SolidColor),
                 QStringLiteral("The one color used when the view is not colored by an array."));
}

void VXOutlineRepPimpl::addOpacityControls(QVBoxLayout* layout)
{
  m_OpacitySlider = Utils::GenerateOpacityWidget(layout->parentWidget(), layout);
  connect(m_OpacitySlider.data(), &QSlider::valueChanged, this, &VXOutlineRepPimpl::setOpacity);
  addHelpToolTip(m_OpacitySlider, Doc::LevelAnchor(levelName(), Doc::k_Opacity),
                 QStringLiteral("How opaque the view is, from 0 (invisible) to 100 percent."));
}

void VXOutlineRepPimpl::addEdgesControls(QVBoxLayout* layout)
{
  QWidget* parent = layout->parentWidget();
  m_LineSizeEdit = Utils::GenerateIntegerLineEditWidget(parent, layout, ZRVtkModule::constants::k_LineSize);
  connect(m_LineSizeEdit.data(), &QLineEdit::textEdited, this, &VXOutlineRepPimpl::lineSizeEdited);
  connect(m_LineSizeEdit.data(), &QLineEdit::returnPressed, this, &VXOutlineRepPimpl::lineSizeChanged);
  addHelpToolTip(m_LineSizeEdit, Doc::LevelAnchor(levelName(), Doc::k_LineSize),
                 QStringLiteral("The width of lines in pixels; press Return to apply."));
  m_LinesAsTubesCheckBox =
      Utils::GenerateCheckBoxWidget(parent, layout, ZRVtkModule::constants::k_LinesAsTubes);
  connect(m_LinesAsTubesCheckBox.data(), &QCheckBox::toggled, this,
          &VXOutlineRepPimpl::setRenderLinesAsTubes);
  addHelpToolTip(m_LinesAsTubesCheckBox, Doc::LevelAnchor(levelName(), Doc::k_LinesAsTubes),
                 QStringLiteral("Shades lines as round tubes."));
}

void VXOutlineRepPimpl::lineSizeEdited()
{
  ZRStyle::ChangeBorderStyle(m_LineSizeEdit, true);
}

void VXOutlineRepPimpl::lineSizeChanged()
{
  if (!m_LineSizeEdit)
  {
    return;
  }
  bool ok = false;
  const int size = m_LineSizeEdit->text().toInt(&ok);
  if (ok)
  {
    setLineSize(size);
  }
  ZRStyle::ChangeBorderStyle(m_LineSizeEdit, false);
}

void VXOutlineRepPimpl::addDecimationControls(QVBoxLayout* layout)
{
  QWidget* parent = layout->parentWidget();
  m_DecimationCheckBox =
      Utils::GenerateCheckBoxWidget(parent, layout, QStringLiteral("Use Decimation During Interactions"));
  connect(m_DecimationCheckBox.data(), &QCheckBox::toggled, this,
          &VXRepresentationPimpl::setUseDecimationOnInteraction);
  addHelpToolTip(m_DecimationCheckBox, Doc::LevelAnchor(levelName(), Doc::k_Decimation),
                 QStringLiteral("Draws a simplified geometry while the camera moves."));
  const QString axes[3] = {QStringLiteral("Divisions X"), QStringLiteral("Divisions Y"),
                           QStringLiteral("Divisions Z")};
  for (int axis = 0; axis < 3; ++axis)
  {
    m_DivisionEdits[axis] = Utils::GenerateIntegerLineEditWidget(parent, layout, axes[axis]);
    ZRLineEdit* edit = m_DivisionEdits[axis];
    connect(edit, &QLineEdit::textEdited, this, [edit]() { ZRStyle::ChangeBorderStyle(edit, true); });
    connect(edit, &QLineEdit::returnPressed, this,
            [this, edit, axis]()
            {
              bool ok = false;
              const int value = edit->text().toInt(&ok);
              if (ok && value > 0)
              {
                std::array<int, 3> divisions = m_DecimationDivisions;
                divisions[axis] = value;
                setNumberOfDimensions(divisions);
              }
              ZRStyle::ChangeBorderStyle(edit, false);
            });
  }
  m_UseInputPointsCheckBox =
      Utils::GenerateCheckBoxWidget(parent, layout, QStringLiteral("Use Input Points"));
  connect(m_UseInputPointsCheckBox.data(), &QCheckBox::toggled, this, &VXOutlineRepPimpl::setUseInputPoints);
  m_UseFeatureEdgesCheckBox =
      Utils::GenerateCheckBoxWidget(parent, layout, QStringLiteral("Use Feature Edges"));
  connect(m_UseFeatureEdgesCheckBox.data(), &QCheckBox::toggled, this,
          &VXOutlineRepPimpl::setUseFeatureEdges);
  m_UseFeaturePointsCheckBox =
      Utils::GenerateCheckBoxWidget(parent, layout, QStringLiteral("Use Feature Points"));
  connect(m_UseFeaturePointsCheckBox.data(), &QCheckBox::toggled, this,
          &VXOutlineRepPimpl::setUseFeaturePoints);
  m_UseInternalTrianglesCheckBox =
      Utils::GenerateCheckBoxWidget(parent, layout, QStringLiteral("Use Internal Triangles"));
  connect(m_UseInternalTrianglesCheckBox.data(), &QCheckBox::toggled, this,
          &VXOutlineRepPimpl::setUseInternalTriangles);
}

void VXOutlineRepPimpl::updateSettingsControls()
{
  VXRepresentationPimpl::updateSettingsControls();
  setChecked(m_DetachCheckBox, m_DetachColorSettings);
  if (m_SolidColorButton)
  {
    const QSignalBlocker blocker(m_SolidColorButton);
    m_SolidColorButton->setColor(m_SolidColor);
  }
  setBlocked<QAbstractSlider, int>(m_OpacitySlider, &QAbstractSlider::setValue, getOpacity());
  if (m_LineSizeEdit)
  {
    setBlocked<QLineEdit, const QString&>(m_LineSizeEdit, &QLineEdit::setText, QString::number(m_LineSize));
    ZRStyle::ChangeBorderStyle(m_LineSizeEdit, false);
  }
  setChecked(m_LinesAsTubesCheckBox, m_RenderLinesAsTubes);
  setChecked(m_DecimationCheckBox, m_UseDecimationOnInteraction);
  for (int axis = 0; axis < 3; ++axis)
  {
    if (m_DivisionEdits[axis])
    {
      setBlocked<QLineEdit, const QString&>(m_DivisionEdits[axis], &QLineEdit::setText,
                                            QString::number(m_DecimationDivisions[axis]));
      ZRStyle::ChangeBorderStyle(m_DivisionEdits[axis], false);
    }
  }
  setChecked(m_UseInputPointsCheckBox, m_UseInputPoints);
  setChecked(m_UseFeatureEdgesCheckBox, m_UseFeatureEdges);
  setChecked(m_UseFeaturePointsCheckBox, m_UseFeaturePoints);
  setChecked(m_UseInternalTrianglesCheckBox, m_UseInternalTriangles);
  updateColorControlsEnabled();
}

void VXOutlineRepPimpl::updateColorControlsEnabled()
{
  const bool hasSource =
      m_Owner != nullptr && qobject_cast<VXDataSource*>(m_Owner->parentDataSource()) != nullptr;
  // Without a data source to follow, the view always has its own colours.
  const bool own = m_DetachColorSettings || !hasSource;
  if (m_DetachCheckBox)
  {
    m_DetachCheckBox->setEnabled(hasSource);
  }
  if (m_ParentSourceButton)
  {
    m_ParentSourceButton->setEnabled(hasSource);
  }
  if (m_SolidColorButton)
  {
    m_SolidColorButton->setEnabled(own);
  }
}

void VXOutlineRepPimpl::setNumberOfDimensions(std::array<int, 3> divisions)
{
  for (int& value : divisions)
  {
    value = std::max(1, value);
  }
  m_DecimationDivisions = divisions;
  decimateGeometry();
}

void VXOutlineRepPimpl::setUseInputPoints(bool use)
{
  m_UseInputPoints = use;
  decimateGeometry();
}

void VXOutlineRepPimpl::setUseFeatureEdges(bool use)
{
  m_UseFeatureEdges = use;
  decimateGeometry();
}

void VXOutlineRepPimpl::setUseFeaturePoints(bool use)
{
  m_UseFeaturePoints = use;
  decimateGeometry();
}

void VXOutlineRepPimpl::setUseInternalTriangles(bool use)
{
  m_UseInternalTriangles = use;
  decimateGeometry();
}

void VXOutlineRepPimpl::onDetachColorSettings(bool detached)
{
  m_DetachColorSettings = detached;
  if (detached)
  {
    disconnectParentDataSourceColorSettings();
  }
  else
  {
    connectParentDataSourceColorSettings();
  }
  updateSettingsControls();
}

void VXOutlineRepPimpl::connectParentDataSourceColorSettings()
{
  auto* source = qobject_cast<VXDataSource*>(m_Owner != nullptr ? m_Owner->parentDataSource() : nullptr);
  if (source == nullptr)
  {
    return;
  }
  connect(source, &VXDataSource::syncChildColorMaps, this, &VXOutlineRepPimpl::onSyncColorMapToParentGeometry,
          Qt::UniqueConnection);
  if (m_DetachColorSettings)
  {
    return;
  }
  connect(source, &VXDataSource::solidColorChanged, this, &VXOutlineRepPimpl::setSolidColor,
          Qt::UniqueConnection);
  connect(source, &VXDataSource::solidColorChanged, this, &VXOutlineRepPimpl::updateSettingsControls,
          Qt::UniqueConnection);
  // Following the source means taking its colour now, not only at its next change.
  setSolidColor(source->getSolidColor());
}

void VXOutlineRepPimpl::onSyncColorMapToParentGeometry()
{
  if (m_DetachColorSettings)
  {
    onDetachColorSettings(false);
  }
}

void VXOutlineRepPimpl::disconnectParentDataSourceColorSettings()
{
  if (auto* source = qobject_cast<VXDataSource*>(m_Owner != nullptr ? m_Owner->parentDataSource() : nullptr))
  {
    disconnect(source, &VXDataSource::solidColorChanged, this, nullptr);
  }
}
