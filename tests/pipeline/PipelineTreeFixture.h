#pragma once

#include "main/VXInfoWidget.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/VXPipelineModel.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"

#include <vtkNew.h>
#include <vtkSphereSource.h>
#include <vtkXMLPolyDataWriter.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

// A pipeline with its tree model and information panel over a shown view grid of one render window.
class PipelineTreeFixture : public ::testing::Test
{
protected:
  void SetUp() override
  {
    ASSERT_TRUE(m_Dir.isValid());
    m_Grid.resize(400, 300);
    m_Grid.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Grid));
    m_Pipeline.setActiveViewWidget(m_Grid.activeView());
    m_Info.setPipelineModel(&m_Model);
    m_Info.onActiveViewChanged(m_Grid.activeView());
  }

  // A sphere of triangles written by VTK's own XML writer.
  QString writeSphere(const QString& fileName, int resolution = 12)
  {
    vtkNew<vtkSphereSource> sphere;
    sphere->SetThetaResolution(resolution);
    sphere->SetPhiResolution(resolution);
    vtkNew<vtkXMLPolyDataWriter> writer;
    writer->SetInputConnection(sphere->GetOutputPort());
    const QString path = m_Dir.filePath(fileName);
    writer->SetFileName(path.toLocal8Bit().constData());
    writer->Write();
    return path;
  }

  // Imports a sphere file; its data source gets the default data view in the active window.
  VXBridgeObject* importSphere(const QString& fileName)
  {
    return m_Pipeline.importFile(writeSphere(fileName));
  }

  // Deleted objects go when control is back in the event loop.
  static void settle()
  {
    for (int i = 0; i < 3; ++i)
    {
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      QCoreApplication::processEvents();
    }
  }

  QModelIndex nameIndex(QObject* object) const
  {
    return m_Model.helperIndex(object, VXPipelineModel::NameColumn);
  }
  QModelIndex checkIndex(QObject* object) const
  {
    return m_Model.helperIndex(object, VXPipelineModel::VisibilityColumn);
  }

  QTemporaryDir m_Dir;
  VXViewGridWidget m_Grid;
  VXPipeline m_Pipeline;
  VXInfoWidget m_Info;
  VXPipelineModel m_Model{&m_Pipeline, &m_Info};
};
