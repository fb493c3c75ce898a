// Reads dataset files with VTK's own readers in a process that knows nothing of this library, as any
// other VTK-based tool would, and reports every text VTK prints on the way. Exit code 0 only when every
// file read without a word and gave a dataset.
//   zr_plain_vtk_reader FILE...
#include <vtkDataSet.h>
#include <vtkGenericDataObjectReader.h>
#include <vtkLogger.h>
#include <vtkObjectFactory.h>
#include <vtkOutputWindow.h>
#include <vtkSmartPointer.h>
#include <vtkXMLGenericDataObjectReader.h>

#include <iostream>
#include <string>

namespace
{
class CountingOutputWindow : public vtkOutputWindow
{
public:
  static CountingOutputWindow* New();
  vtkTypeMacro(CountingOutputWindow, vtkOutputWindow);
  void DisplayText(const char* text) override
  {
    ++m_Count;
    std::cout << text << '\n';
  }
  int m_Count = 0;
};
vtkStandardNewMacro(CountingOutputWindow);

bool EndsWith(const std::string& text, const std::string& end)
{
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

vtkDataSet* Read(const std::string& path, vtkSmartPointer<vtkAlgorithm>& keep)
{
  if (EndsWith(path, ".vtk"))
  {
    auto reader = vtkSmartPointer<vtkGenericDataObjectReader>::New();
    reader->SetFileName(path.c_str());
    reader->Update();
    keep = reader;
    return vtkDataSet::SafeDownCast(reader->GetOutput());
  }
  auto reader = vtkSmartPointer<vtkXMLGenericDataObjectReader>::New();
  reader->SetFileName(path.c_str());
  reader->Update();
  keep = reader;
  return vtkDataSet::SafeDownCast(reader->GetOutput());
}
} // namespace

int main(int argc, char** argv)
{
  vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF);
  auto window = vtkSmartPointer<CountingOutputWindow>::New();
  vtkOutputWindow::SetInstance(window);
  int failures = 0;
  for (int i = 1; i < argc; ++i)
  {
    const int before = window->m_Count;
    vtkSmartPointer<vtkAlgorithm> reader;
    vtkDataSet* output = Read(argv[i], reader);
    if (output == nullptr || window->m_Count != before)
    {
      std::cout << argv[i] << ": " << (output == nullptr ? "no dataset" : "read with messages") << '\n';
      ++failures;
    }
    else
    {
      std::cout << argv[i] << ": " << output->GetNumberOfCells() << " cells\n";
    }
  }
  return failures == 0 ? 0 : 1;
}
