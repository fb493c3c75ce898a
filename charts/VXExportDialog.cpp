#include "charts/VXExportDialog.h"

#include "charts/VXChart.h"
#include "charts/VXChartCsvWriter.h"
#include "platform/plottaro/Plot.h"
#include "platform/plottaro/PlottaroGraphicsView.h"
#include "platform/plottaro/QtSvgRenderSurface.h"

#include "ui_VXExportDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageWriter>
#include <QIntValidator>
#include <QKeyEvent>
#include <QSignalBlocker>

namespace
{
const QString k_ImageFilter = QStringLiteral(
    "PNG Image (*.png);;JPEG Image (*jpg *.jpeg);;Bitmap Image (*bmp);;TIFF Image (*.tif *.tiff)");
const QString k_SvgFilter = QStringLiteral("SVG File (*.svg)");
const QString k_CsvFilter = QStringLiteral("CSV File (*.csv)");
constexpr int k_MaxImageSide = 20000;
} // namespace

VXExportDialog::VXExportDialog(VXChart* chart, QWidget* parent)
    : QDialog(parent)
    , m_Ui(std::make_unique<Ui::VXExportDialog>())
    , m_Chart(chart)
{
  m_Ui->setupUi(this);
  m_Ui->imageFileWidth->setValidator(new QIntValidator(1, k_MaxImageSide, this));
  m_Ui->imageFileHeight->setValidator(new QIntValidator(1, k_MaxImageSide, this));
  connect(m_Ui->exportTypeComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
          &VXExportDialog::onExportTypeChanged);
  connect(m_Ui->exportFileLineEdit, &QLineEdit::textChanged, this, &VXExportDialog::exportFileChanged);
  connect(m_Ui->exportFileLineEdit, &QLineEdit::textEdited, this, &VXExportDialog::exportFileEdited);
  connect(m_Ui->imageFileWidth, &QLineEdit::textChanged, this, &VXExportDialog::imageFileWidthChanged);
  connect(m_Ui->imageFileHeight, &QLineEdit::textChanged, this, &VXExportDialog::imageFileHeightChanged);
  connect(m_Ui->imageFileWidth, &QLineEdit::textEdited, this, &VXExportDialog::imageFileWidthEdited);
  connect(m_Ui->imageFileHeight, &QLineEdit::textEdited, this, &VXExportDialog::imageFileHeightEdited);
  connect(m_Ui->resetSizeBtn, &QPushButton::clicked, this, &VXExportDialog::resetExportImageSize);
  connect(m_Ui->selectFileBtn, &QPushButton::clicked, this, &VXExportDialog::selectExportFileButtonClicked);
  connect(m_Ui->saveBtn, &QPushButton::clicked, this, &VXExportDialog::onSaveButtonClicked);
  connect(m_Ui->cancelBtn, &QPushButton::clicked, this, &VXExportDialog::onCancelButtonClicked);
  resetExportImageSize();
  onExportTypeChanged();
}

VXExportDialog::~VXExportDialog() = default;

QString VXExportDialog::ImageFormatOf(const QString& path)
{
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix == QStringLiteral("png"))
  {
    return QStringLiteral("PNG");
  }
  if (suffix == QStringLiteral("jpg") || suffix == QStringLiteral("jpeg"))
  {
    return QStringLiteral("JPEG");
  }
  if (suffix == QStringLiteral("bmp"))
  {
    return QStringLiteral("BMP");
  }
  if (suffix == QStringLiteral("tif") || suffix == QStringLiteral("tiff"))
  {
    return QStringLiteral("TIFF");
  }
  return {};
}

bool VXExportDialog::SaveImageFile(const QString& path, int width, int height, bool transparent,
                                   const QPointer<VXChart>& chart)
{
  if (chart == nullptr || width <= 0 || height <= 0)
  {
    return false;
  }
  QImage image = chart->getPlot()->renderToImage(width, height, transparent);
  if (path.isEmpty())
  {
    QApplication::clipboard()->setImage(image);
    return true;
  }
  const QString format = ImageFormatOf(path);
  if (format.isEmpty())
  {
    return false;
  }
  if (format == QStringLiteral("JPEG") || format == QStringLiteral("BMP"))
  {
    image = image.convertToFormat(QImage::Format_RGB32); // no alpha in these formats
  }
  QImageWriter writer(path, format.toLatin1());
  return writer.write(image);
}

bool VXExportDialog::SaveSvgFile(const QString& path, int width, int height, const QPointer<VXChart>& chart)
{
  if (chart == nullptr || width <= 0 || height <= 0)
  {
    return false;
  }
  plottaro::QtSvgRenderSurface surface;
  if (!surface.create(width, height))
  {
    return false;
  }
  chart->getPlot()->renderInto(surface.painter(), width, height);
  return surface.saveToFile(path.toStdString());
}

VXExportDialog::ExportType VXExportDialog::exportType() const
{
  return static_cast<ExportType>(m_Ui->exportTypeComboBox->currentIndex());
}

void VXExportDialog::setExportType(ExportType type)
{
  m_Ui->exportTypeComboBox->setCurrentIndex(static_cast<int>(type));
}

QString VXExportDialog::exportFile() const
{
  return m_Ui->exportFileLineEdit->text();
}

void VXExportDialog::setExportFile(const QString& path)
{
  m_Ui->exportFileLineEdit->setText(path);
}

int VXExportDialog::imageWidth() const
{
  return m_Ui->imageFileWidth->text().toInt();
}

int VXExportDialog::imageHeight() const
{
  return m_Ui->imageFileHeight->text().toInt();
}

bool VXExportDialog::isSaveEnabled() const
{
  return m_Ui->saveBtn->isEnabled();
}

void VXExportDialog::onExportTypeChanged()
{
  const ExportType type = exportType();
  const bool sized = type != Csv;
  for (QWidget* widget :
       {static_cast<QWidget*>(m_Ui->imageWidthLabel), static_cast<QWidget*>(m_Ui->imageFileWidth),
        static_cast<QWidget*>(m_Ui->imageHeightLabel), static_cast<QWidget*>(m_Ui->imageFileHeight),
        static_cast<QWidget*>(m_Ui->resetSizeBtn)})
  {
    widget->setEnabled(sized);
  }
  m_Ui->transparentBacgroundCheckBox->setEnabled(type == Image);
  const QString suffix =
      type == Image ? QStringLiteral("png") : (type == Svg ? QStringLiteral("svg") : QStringLiteral("csv"));
  const QString path = exportFile();
  if (!path.isEmpty())
  {
    const QFileInfo info(path);
    const QString stem = info.suffix().isEmpty() ? path : path.left(path.size() - info.suffix().size() - 1);
    setExportFile(stem + QLatin1Char('.') + suffix);
  }
  checkForValidExport();
}

void VXExportDialog::checkForValidExport()
{
  const ExportType type = exportType();
  const bool sizeOk = type == Csv || (imageWidth() > 0 && imageHeight() > 0);
  const bool formatOk = type != Image || !ImageFormatOf(exportFile()).isEmpty();
  const bool valid = m_Chart != nullptr && !exportFile().trimmed().isEmpty() && sizeOk && formatOk;
  m_Ui->saveBtn->setEnabled(valid);
  QString why;
  if (!exportFile().trimmed().isEmpty() && !formatOk)
  {
    why = QStringLiteral("The file must end in .png, .jpg, .jpeg, .bmp, .tif or .tiff");
  }
  else if (!sizeOk)
  {
    why = QStringLiteral("Width and height must be whole numbers above 0");
  }
  m_Ui->messageLabel->setText(why);
}

void VXExportDialog::exportFileChanged()
{
  checkForValidExport();
}

void VXExportDialog::exportFileEdited()
{
  checkForValidExport();
}

void VXExportDialog::imageFileWidthChanged()
{
  checkForValidExport();
}

void VXExportDialog::imageFileHeightChanged()
{
  checkForValidExport();
}

void VXExportDialog::imageFileWidthEdited()
{
  checkForValidExport();
}

void VXExportDialog::imageFileHeightEdited()
{
  checkForValidExport();
}

void VXExportDialog::resetExportImageSize()
{
  if (m_Chart == nullptr)
  {
    return;
  }
  const QRect area = m_Chart->getView()->rect();
  const QSignalBlocker widthBlocker(m_Ui->imageFileWidth);
  const QSignalBlocker heightBlocker(m_Ui->imageFileHeight);
  m_Ui->imageFileWidth->setText(QString::number(area.right() - area.left() + 1));
  m_Ui->imageFileHeight->setText(QString::number(area.bottom() - area.top() + 1));
  checkForValidExport();
}

void VXExportDialog::selectExportFileButtonClicked()
{
  const ExportType type = exportType();
  const QString filter = type == Image ? k_ImageFilter : (type == Svg ? k_SvgFilter : k_CsvFilter);
  const QString path =
      QFileDialog::getSaveFileName(this, QStringLiteral("Save Screenshot"), exportFile(), filter);
  if (!path.isEmpty())
  {
    setExportFile(path);
  }
}

void VXExportDialog::onSaveButtonClicked()
{
  if (m_Chart == nullptr)
  {
    return;
  }
  const QString path = exportFile();
  bool saved = false;
  switch (exportType())
  {
  case Image:
    saved = SaveImageFile(path, imageWidth(), imageHeight(), m_Ui->transparentBacgroundCheckBox->isChecked(),
                          m_Chart);
    if (!saved)
    {
      Q_EMIT printOutput(QStringLiteral("Could not save the chart image to '%1'.").arg(path));
    }
    break;
  case Svg:
    saved = SaveSvgFile(path, imageWidth(), imageHeight(), m_Chart);
    if (!saved)
    {
      Q_EMIT printOutput(QStringLiteral("Could not save the chart as SVG to '%1'.").arg(path));
    }
    break;
  case Csv:
  {
    const VXChartCsvWriter::Status status = VXChartCsvWriter::WriteFile(path, *m_Chart);
    saved = status == VXChartCsvWriter::Status::Written;
    if (!saved)
    {
      Q_EMIT printOutput(VXChartCsvWriter::Message(status, path));
    }
    break;
  }
  }
  if (saved)
  {
    Q_EMIT printOutput(QStringLiteral("Chart saved to file at %1").arg(path));
    accept();
  }
}

void VXExportDialog::onCancelButtonClicked()
{
  reject();
}

void VXExportDialog::keyPressEvent(QKeyEvent* event)
{
  if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && isSaveEnabled())
  {
    onSaveButtonClicked();
    return;
  }
  QDialog::keyPressEvent(event);
}
