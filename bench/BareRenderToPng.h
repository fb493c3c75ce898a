#pragma once

// The end of the bare toolkit programs the viewer is measured against: draw the renderer off screen
// at the given size and write the frame to a PNG. VTK only, like the programs themselves.
#include <vtkNew.h>
#include <vtkPNGWriter.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkWindowToImageFilter.h>

// Returns the process exit code: 0 when the PNG was written.
inline int RenderToPng(vtkRenderer* renderer, int width, int height, int multiSamples, const char* path)
{
  vtkNew<vtkRenderWindow> window;
  window->SetOffScreenRendering(1);
  if (multiSamples >= 0)
  {
    window->SetMultiSamples(multiSamples);
  }
  window->SetSize(width, height);
  window->AddRenderer(renderer);
  window->Render();

  vtkNew<vtkWindowToImageFilter> capture;
  capture->SetInput(window);
  capture->SetInputBufferTypeToRGB();
  capture->ReadFrontBufferOff();
  vtkNew<vtkPNGWriter> writer;
  writer->SetFileName(path);
  writer->SetInputConnection(capture->GetOutputPort());
  writer->Write();
  return writer->GetErrorCode() == 0 ? 0 : 1;
}
