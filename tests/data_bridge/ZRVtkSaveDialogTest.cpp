#include "DataBridgeTestFiles.h"

#include "data_bridge/ZRVtkDatasetReaders.h"
#include "data_bridge/ZRVtkDatasetWriters.h"
#include "data_bridge/ZRVtkLibFileTypes.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>

#include <vtkDataSet.h>

#include <functional>

#include <gtest/gtest.h>

using DataBridgeTestFiles::Fixture;
namespace io = ZRVtkLib::io;
namespace utils = ZRVtk::utils;

namespace
{
// Runs `handle` on the next modal dialog of type DialogT once it is open, from inside its event loop.
template<class DialogT>
void WhenModalOpens(std::function<void(DialogT*)> handle)
{
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, timer,
                   [timer, handle]()
                   {
                     if (auto* dialog = qobject_cast<DialogT*>(QApplication::activeModalWidget()))
                     {
                       timer->stop();
                       timer->deleteLater();
                       handle(dialog);
                     }
                   });
  timer->start(20);
}

// Chooses a file and a filter as a user would: the filter in its combo box, the path typed in.
void ChooseAndAccept(QFileDialog* dialog, const QString& filter, const QString& path)
{
  dialog->selectNameFilter(filter);
  auto* fileNameEdit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  ASSERT_NE(fileNameEdit, nullptr);
  fileNameEdit->setText(path);
  static_cast<QDialog*>(dialog)->accept(); // runs QFileDialog's own checks
}

class ZRVtkSaveDialog : public ::testing::Test
{
protected:
  QStringList writtenFiles() const { return QDir(m_Dir.path()).entryList(QDir::Files, QDir::Name); }

  QTemporaryDir m_Dir;
  vtkSmartPointer<vtkDataSet> m_Image = utils::Read(Fixture("vtk/image.vti"));
};
} // namespace

TEST_F(ZRVtkSaveDialog, OffersTheFiltersOfTheDatasetTypeAndCancelWritesNothing)
{
  QString caption;
  QStringList filters;
  QString directory;
  WhenModalOpens<QFileDialog>(
      [&](QFileDialog* dialog)
      {
        caption = dialog->windowTitle();
        filters = dialog->nameFilters();
        directory = dialog->directory().absolutePath();
        dialog->reject();
      });
  EXPECT_FALSE(utils::Write(m_Dir.filePath("proposed.vti"), m_Image, nullptr));
  EXPECT_EQ(caption, "Save Data Set");
  EXPECT_EQ(filters, QStringList({io::VTI_FILE_FILTER, io::PVTI_FILE_FILTER}));
  EXPECT_EQ(directory, QDir(m_Dir.path()).absolutePath());
  EXPECT_TRUE(writtenFiles().isEmpty());
}

TEST_F(ZRVtkSaveDialog, ParallelFilterWritesWithTheParallelWriter)
{
  WhenModalOpens<QFileDialog>(
      [&](QFileDialog* dialog)
      { ChooseAndAccept(dialog, io::PVTI_FILE_FILTER, m_Dir.filePath("chosen.pvti")); });
  EXPECT_TRUE(utils::Write(m_Dir.filePath("proposed.vti"), m_Image, nullptr));
  EXPECT_EQ(writtenFiles(), QStringList({"chosen.pvti", "chosen_0.vti"}));
  vtkSmartPointer<vtkDataSet> back = utils::Read(m_Dir.filePath("chosen.pvti"));
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(back->GetNumberOfPoints(), m_Image->GetNumberOfPoints());
}

TEST_F(ZRVtkSaveDialog, SerialFilterWritesWithTheSerialWriter)
{
  vtkSmartPointer<vtkDataSet> poly = utils::Read(Fixture("vtk/poly.vtp"));
  WhenModalOpens<QFileDialog>(
      [&](QFileDialog* dialog)
      { ChooseAndAccept(dialog, io::VTP_FILE_FILTER, m_Dir.filePath("sphere.vtp")); });
  EXPECT_TRUE(utils::Write(m_Dir.filePath("proposed.vtp"), poly, nullptr));
  EXPECT_EQ(writtenFiles(), QStringList({"sphere.vtp"}));
  EXPECT_TRUE(DataBridgeTestFiles::Contents(m_Dir.filePath("sphere.vtp")).contains("type=\"PolyData\""));
}

TEST_F(ZRVtkSaveDialog, FailedWriteIsShownToTheUser)
{
  // The dialog lets one type a path in a folder that doesn't exist; no writer can create the file.
  const QString unreachable = m_Dir.filePath("missing/image.vti");
  QString warning;
  WhenModalOpens<QFileDialog>(
      [&](QFileDialog* dialog)
      {
        WhenModalOpens<QMessageBox>(
            [&](QMessageBox* box)
            {
              warning = box->windowTitle() + "|" + box->text();
              box->accept();
            });
        ChooseAndAccept(dialog, io::VTI_FILE_FILTER, unreachable);
      });
  EXPECT_FALSE(utils::Write(m_Dir.filePath("proposed.vti"), m_Image, nullptr));
  EXPECT_TRUE(warning.startsWith("Save Data Set|Failed to write the data set to '" + unreachable + "'."))
      << warning.toStdString();
  EXPECT_TRUE(writtenFiles().isEmpty());
}
