#pragma once

#include <QDialog>
#include <QPointer>

#include <memory>

class VXChart;
namespace Ui
{
class VXExportDialog;
}

/**
 * @brief Writes a chart to an image (PNG, JPEG, BMP or TIFF by the file's ending), an SVG file or a CSV
 * file.
 */
class VXExportDialog : public QDialog
{
  Q_OBJECT

public:
  enum ExportType
  {
    Image = 0,
    Svg = 1,
    Csv = 2
  };

  VXExportDialog(VXChart* chart, QWidget* parent = nullptr);
  ~VXExportDialog() override;

  /** @brief Renders the chart at width x height; an empty path puts the picture on the clipboard. */
  static bool SaveImageFile(const QString& path, int width, int height, bool transparent,
                            const QPointer<VXChart>& chart);
  static bool SaveSvgFile(const QString& path, int width, int height, const QPointer<VXChart>& chart);
  /** @brief Qt's image format for a file ending, compared without regard to case; "" for none. */
  static QString ImageFormatOf(const QString& path);

  ExportType exportType() const;
  void setExportType(ExportType type);
  QString exportFile() const;
  void setExportFile(const QString& path);
  int imageWidth() const;
  int imageHeight() const;
  bool isSaveEnabled() const;

Q_SIGNALS:
  void printOutput(const QString& message) const;

public Q_SLOTS:
  void onExportTypeChanged();
  void checkForValidExport();
  void exportFileChanged();
  void exportFileEdited();
  void imageFileWidthChanged();
  void imageFileHeightChanged();
  void imageFileWidthEdited();
  void imageFileHeightEdited();
  void resetExportImageSize();
  void selectExportFileButtonClicked();
  void onSaveButtonClicked();
  void onCancelButtonClicked();

protected:
  void keyPressEvent(QKeyEvent* event) override;

private:
  std::unique_ptr<Ui::VXExportDialog> m_Ui;
  QPointer<VXChart> m_Chart;
};
