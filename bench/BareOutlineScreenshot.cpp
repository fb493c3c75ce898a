// The smallest VTK program that makes the viewer's first frame of a .vtp file: reads it, draws its
// outline in an off-screen render window of the given size and writes a PNG. bench-screenshot-startup
// runs it beside `kestrix-viewer --screenshot` as the baseline of what the toolkit itself costs.
//
//   bare-outline-screenshot OUT.png WIDTH HEIGHT [FILE.vtp]      (no file: an empty scene)
#include "BareRenderToPng.h"

#include <vtkActor.h>
#include <vtkNew.h>
#include <vtkOutlineFilter.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>
#include <vtkXMLPolyDataReader.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
  if (argc < 4)
  {
    std::fprintf(stderr, "usage: %s OUT.png WIDTH HEIGHT [FILE.vtp]\n", argv[0]);
    return 2;
  }
  const int width = std::atoi(argv[2]);
  const int height = std::atoi(argv[3]);

  vtkNew<vtkRenderer> renderer;
  renderer->SetBackground(82 / 255.0, 99 / 255.0, 118 / 255.0); // the viewer's default background
  if (argc > 4)
  {
    vtkNew<vtkXMLPolyDataReader> reader;
    reader->SetFileName(argv[4]);
    vtkNew<vtkOutlineFilter> outline;
    outline->SetInputConnection(reader->GetOutputPort());
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputConnection(outline->GetOutputPort());
    vtkNew<vtkActor> actor;
    actor->SetMapper(mapper);
    actor->GetProperty()->SetColor(1.0, 1.0, 1.0);
    actor->GetProperty()->SetLineWidth(1.5);
    renderer->AddActor(actor);
    mapper->Update();
    if (reader->GetOutput()->GetNumberOfPoints() == 0)
    {
      std::fprintf(stderr, "%s: no points read from %s\n", argv[0], argv[4]);
      return 1;
    }
  }
  renderer->ResetCamera();

  return RenderToPng(renderer, width, height, -1, argv[1]);
}
