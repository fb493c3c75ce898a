// The settings panel of the glyph view: the points view's colouring, then the glyph controls.
#include "data_views/VXEllipseSourceWidget.h"
#include "data_views/VXGlyphRepPimpl.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "platform/ZRCheckBox.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRLabel.h"
#include "platform/ZRLineEdit.h"

#include <QDoubleValidator>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace Utils = ZRVtkModule::utils;

namespace
{
// A label and a line edit in a row widget of its own, so that the row can be hidden.
ZRLineEdit* numberRow(QWidget* parent, QVBoxLayout* layout, const QString& label, QValidator* validator,
                      const QString& toolTip, QPointer<QWidget>& row)
{
  row = new QWidget(parent);
  auto* rowLayout = new QHBoxLayout(row);
  rowLayout->setContentsMargins(4, 2, 4, 2);
  rowLayout->setSpacing(2);
  rowLayout->addWidget(new ZRLabel(label, row));
  auto* edit = new ZRLineEdit(row);
  validator->setParent(edit);
  edit->setValidator(validator);
  edit->setToolTip(Utils::HtmlToolTip(toolTip));
  rowLayout->addWidget(edit, 1);
  layout->addWidget(row);
  return edit;
}

void setText(QLineEdit* edit, const QString& text)
{
  if (edit != nullptr)
  {
    const QSignalBlocker blocker(edit);
    edit->setText(text);
  }
}

void setCurrentText(QComboBox* box, const QString& text)
{
  if (box != nullptr)
  {
    const QSignalBlocker blocker(box);
    box->setCurrentText(text);
  }
}
} // namespace

void VXGlyphRepPimpl::addStylingControls(QVBoxLayout* layout)
{
  // Glyphs are surfaces: the point size and sphere controls of the points view do not apply.
  addOpacityControls(layout);
}

void VXGlyphRepPimpl::addExtraSections(QVBoxLayout* content)
{
  QWidget* section = Utils::GenerateSettingsLabel(content->parentWidget(), content, QStringLiteral("Glyphs"));
  auto* layout = qobject_cast<QVBoxLayout*>(section->layout());

  m_GlyphTypeComboBox =
      Utils::GenerateComboBoxWidget(section, layout, QStringLiteral("Glyph Type: "), GlyphTypes(),
                                    QStringLiteral("The shape drawn at each sample point."));
  connect(m_GlyphTypeComboBox.data(), &QComboBox::currentTextChanged, this,
          [this](const QString& type)
          {
            setGlyphType(type);
            updateSettingsControls();
          });
  m_EllipseEditButton = Utils::GenerateZRPushButton(
      QStringLiteral("Edit"),
      QStringLiteral("This opens up a page in which to define the ellipse for Ellipse glyph types."), false,
      true, layout, section);
  connect(m_EllipseEditButton.data(), &QPushButton::clicked, this,
          [this, section]()
          {
            auto* dialog = new VXEllipseSourceWidget(this, section);
            dialog->setAttribute(Qt::WA_DeleteOnClose);
            dialog->show();
          });

  QStringList orientations = orientationArrayChoices();
  orientations.prepend(QString());
  m_OrientationComboBox = Utils::GenerateComboBoxWidget(
      section, layout, QStringLiteral("Orientation Array: "), orientations,
      QStringLiteral("A three-component array that turns each glyph; empty leaves them unturned."));
  connect(m_OrientationComboBox.data(), &QComboBox::currentTextChanged, this,
          &VXGlyphRepPimpl::setOrientationArray);

  QStringList scalings = Utils::ColoringArrays(inputDataSet()).keys();
  scalings.prepend(QString());
  m_ScaleArrayComboBox = Utils::GenerateComboBoxWidget(
      section, layout, QStringLiteral("Scale Array: "), scalings,
      QStringLiteral(
          "An array whose values (or magnitudes) scale each glyph; empty scales by the factor only."));
  connect(m_ScaleArrayComboBox.data(), &QComboBox::currentTextChanged, this, &VXGlyphRepPimpl::setScaleArray);

  QPointer<QWidget> scaleRow;
  m_ScaleFactorEdit =
      numberRow(section, layout, QStringLiteral("Scale Factor: "), new QDoubleValidator(),
                QStringLiteral("Multiplies the size of every glyph; press Return to apply. A factor typed "
                               "here is kept whatever the data."),
                scaleRow);
  connect(m_ScaleFactorEdit.data(), &QLineEdit::returnPressed, this,
          [this]()
          {
            bool ok = false;
            const double factor = m_ScaleFactorEdit->text().toDouble(&ok);
            if (ok)
            {
              setScaleFactor(factor);
            }
          });
  m_ScaleFromDataCheckBox = Utils::GenerateCheckBoxWidget(section, layout, QStringLiteral("Scale From Data"));
  m_ScaleFromDataCheckBox->setToolTip(Utils::HtmlToolTip(
      QStringLiteral("Sizes the glyphs by the spacing of the points that carry them, so that neighbouring "
                     "glyphs about touch; the factor then follows the data and the sampling.")));
  connect(m_ScaleFromDataCheckBox.data(), &QCheckBox::toggled, this,
          [this](bool fromData)
          {
            if (fromData)
            {
              useScaleFactorFromData();
            }
            else
            {
              // The factor shown so far becomes the chosen one.
              setScaleFactor(m_ScaleFactor);
            }
          });

  m_GlyphModeComboBox =
      Utils::GenerateComboBoxWidget(section, layout, QStringLiteral("Glyph Mode: "), GlyphModes(),
                                    QStringLiteral("Which points carry a glyph."));
  connect(m_GlyphModeComboBox.data(), &QComboBox::currentTextChanged, this,
          [this](const QString& mode) { setGlyphMode(mode); });

  auto* strideValidator = new QIntValidator();
  strideValidator->setBottom(0);
  m_StrideEdit =
      numberRow(section, layout, QStringLiteral("Stride: "), strideValidator,
                QStringLiteral("Every how many points a glyph is drawn; 0 counts as 1."), m_StrideRow);
  connect(m_StrideEdit.data(), &QLineEdit::returnPressed, this,
          [this]() { setStride(m_StrideEdit->text().toInt()); });
  auto* countValidator = new QIntValidator();
  countValidator->setBottom(1);
  m_MaxSamplesEdit = numberRow(section, layout, QStringLiteral("Max Num of Sample Points: "), countValidator,
                               QStringLiteral("At most this many points carry glyphs."), m_MaxSamplesRow);
  connect(m_MaxSamplesEdit.data(), &QLineEdit::returnPressed, this,
          [this]() { setMaxSamplePoints(m_MaxSamplesEdit->text().toInt()); });
  m_SeedEdit = numberRow(
      section, layout, QStringLiteral("Seed: "), new QIntValidator(),
      QStringLiteral("The seed of the random sample; the same seed gives the same points."), m_SeedRow);
  connect(m_SeedEdit.data(), &QLineEdit::returnPressed, this,
          [this]() { setSeed(m_SeedEdit->text().toInt()); });

  VXPointsRepPimpl::addExtraSections(content);
}

void VXGlyphRepPimpl::updateGlyphModeVisibility()
{
  const bool uniform = m_GlyphMode != k_AllPoints && m_GlyphMode != k_EveryNthPoint;
  if (m_StrideRow)
  {
    m_StrideRow->setVisible(m_GlyphMode == k_EveryNthPoint);
  }
  if (m_MaxSamplesRow)
  {
    m_MaxSamplesRow->setVisible(uniform);
  }
  if (m_SeedRow)
  {
    m_SeedRow->setVisible(uniform);
  }
}

void VXGlyphRepPimpl::updateScaleFactorControls()
{
  setText(m_ScaleFactorEdit, QString::number(m_ScaleFactor));
  if (m_ScaleFromDataCheckBox)
  {
    const QSignalBlocker blocker(m_ScaleFromDataCheckBox.data());
    m_ScaleFromDataCheckBox->setChecked(!m_ScaleFactorChosen);
  }
}

void VXGlyphRepPimpl::updateSettingsControls()
{
  VXPointsRepPimpl::updateSettingsControls();
  setCurrentText(m_GlyphTypeComboBox, m_GlyphType);
  setCurrentText(m_OrientationComboBox, m_OrientationArray);
  setCurrentText(m_ScaleArrayComboBox, m_ScaleArray);
  setCurrentText(m_GlyphModeComboBox, m_GlyphMode);
  updateScaleFactorControls();
  setText(m_StrideEdit, QString::number(m_Stride));
  setText(m_MaxSamplesEdit, QString::number(m_MaxSamplePoints));
  setText(m_SeedEdit, QString::number(m_Seed));
  if (m_EllipseEditButton)
  {
    m_EllipseEditButton->setEnabled(m_GlyphType == k_Ellipse);
  }
  updateGlyphModeVisibility();
}
