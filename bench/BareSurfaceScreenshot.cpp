// The smallest VTK program that draws what `kestrix-viewer FILE --view surface --color-by ARRAY` shows:
// reads a .vtp file, draws its surface coloured by a cell array over the array's range in an off-screen
// render window of the given size and writes a PNG. bench-screenshot-startup runs it beside the viewer
// as the baseline of what the toolkit itself costs.
//
//   bare-surface-screenshot OUT.png WIDTH HEIGHT FILE.vtp ARRAY
#include "BareRenderToPng.h"

#include <vtkActor.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkLookupTable.h>
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkRenderer.h>
#include <vtkXMLPolyDataReader.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
  if (argc < 6)
  {
    std::fprintf(stderr, "usage: %s OUT.png WIDTH HEIGHT FILE.vtp ARRAY\n", argv[0]);
    return 2;
  }
  const int width = std::atoi(argv[2]);
  const int height = std::atoi(argv[3]);

  vtkNew<vtkXMLPolyDataReader> reader;
  reader->SetFileName(argv[4]);
  reader->Update();
  vtkDataArray* array = reader->GetOutput()->GetCellData()->GetArray(argv[5]);
  if (array == nullptr)
  {
    std::fprintf(stderr, "%s: no cell array %s in %s\n", argv[0], argv[5], argv[4]);
    return 1;
  }
  double range[2];
  array->GetRange(range, -1);

  vtkNew<vtkLookupTable> table;
  table->SetNumberOfTableValues(256);
  table->SetRange(range);
  table->Build();
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(reader->GetOutputPort());
  mapper->SetScalarModeToUseCellFieldData();
  mapper->SelectColorArray(argv[5]);
  mapper->SetLookupTable(table);
  mapper->SetUseLookupTableScalarRange(true);
  mapper->ScalarVisibilityOn();
  vtkNew<vtkActor> actor;
  actor->SetMapper(mapper);

  vtkNew<vtkRenderer> renderer;
  renderer->SetBackground(82 / 255.0, 99 / 255.0, 118 / 255.0); // the viewer's default background
  renderer->AddActor(actor);
  renderer->ResetCamera();

  return RenderToPng(renderer, width, height, 0, argv[1]);
}
