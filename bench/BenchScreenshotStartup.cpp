// Whole-process cost of `kestrix-viewer FILE --view outline --screenshot OUT.png` against
// bare-outline-screenshot, the smallest VTK program that draws the same outline at the same size, and of
// `kestrix-viewer FILE --view surface --color-by CellValue --screenshot OUT.png` against
// bare-surface-screenshot, which draws the same surface coloured by the same cell array; all run as
// processes in the same run. Prints median wall time and median peak resident memory of each, their ratio and
// their difference. Targets: time ratio <= 1.3 with a one-million-triangle file, peak memory at most 40 MiB
// above the bare program. Needs a display:
//   xvfb-run -a -s "-screen 0 1600x1200x24" build/bench/bench-screenshot-startup
//
//   ZR_BENCH_RUNS=9              runs per case (default 5, after one unmeasured warm-up run each)
//   ZR_BENCH_TRIANGLES=5000000   size of the generated sphere (default 1000000)
//   ZR_BENCH_VTP_FILE=/path.vtp  use an existing polydata file instead of the generated sphere
#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkSphereSource.h>
#include <vtkXMLPolyDataWriter.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace
{
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int k_Width = 800;
constexpr int k_Height = 600;
constexpr double k_TimeRatioTarget = 1.3;
constexpr double k_MemoryTargetMiB = 40.0;
// The cell array the generated sphere carries, for the coloured surface case.
constexpr const char* k_CellArray = "CellValue";

struct Sample
{
  double seconds = 0.0;
  double peakMiB = 0.0;
};

struct Measurement
{
  std::vector<Sample> samples;
  bool failed = false;
};

long envNumber(const char* name, long fallback)
{
  const char* text = std::getenv(name);
  return text != nullptr && std::atol(text) > 0 ? std::atol(text) : fallback;
}

// Runs one process to its end; peak resident memory from its own rusage (ru_maxrss, in KiB).
bool runProcess(const std::vector<std::string>& arguments, const fs::path& errorLog, Sample& sample)
{
  std::vector<char*> argv;
  for (const std::string& argument : arguments)
  {
    argv.push_back(const_cast<char*>(argument.c_str()));
  }
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorLog.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                   0644);
  const auto start = Clock::now();
  pid_t pid = 0;
  const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0)
  {
    std::fprintf(stderr, "could not start %s\n", argv[0]);
    return false;
  }
  int status = 0;
  rusage usage{};
  wait4(pid, &status, 0, &usage);
  sample.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  sample.peakMiB = static_cast<double>(usage.ru_maxrss) / 1024.0;
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
  {
    std::fprintf(stderr, "%s failed (status %d); its messages are in %s\n", argv[0], status,
                 errorLog.c_str());
    return false;
  }
  return true;
}

double median(std::vector<double> values)
{
  std::sort(values.begin(), values.end());
  const std::size_t n = values.size();
  return n == 0 ? 0.0 : (n % 2 == 1 ? values[n / 2] : 0.5 * (values[n / 2 - 1] + values[n / 2]));
}

double medianSeconds(const Measurement& m)
{
  std::vector<double> values;
  for (const Sample& s : m.samples)
  {
    values.push_back(s.seconds);
  }
  return median(values);
}

double medianPeakMiB(const Measurement& m)
{
  std::vector<double> values;
  for (const Sample& s : m.samples)
  {
    values.push_back(s.peakMiB);
  }
  return median(values);
}

// A sphere of about the asked number of triangles with a float cell array, written by VTK's own XML
// writer.
fs::path prepareSphere(const fs::path& dir, long triangles)
{
  if (const char* given = std::getenv("ZR_BENCH_VTP_FILE"))
  {
    return given;
  }
  // theta x (phi - 2) x 2 triangles with phi = theta / 2.
  const int theta = static_cast<int>(std::lround(std::sqrt(static_cast<double>(triangles))));
  const int phi = theta / 2 + 2;
  const fs::path file = dir / ("zr-bench-sphere-cells-" + std::to_string(triangles) + ".vtp");
  if (!fs::exists(file))
  {
    std::printf("Generating %s ...\n", file.c_str());
    vtkNew<vtkSphereSource> sphere;
    sphere->SetThetaResolution(theta);
    sphere->SetPhiResolution(phi);
    sphere->Update();
    vtkPolyData* output = sphere->GetOutput();
    vtkNew<vtkFloatArray> values;
    values->SetName(k_CellArray);
    values->SetNumberOfValues(output->GetNumberOfCells());
    for (vtkIdType cell = 0; cell < output->GetNumberOfCells(); ++cell)
    {
      values->SetValue(cell, static_cast<float>(cell % 997));
    }
    output->GetCellData()->AddArray(values);
    vtkNew<vtkXMLPolyDataWriter> writer;
    writer->SetInputData(output);
    writer->SetFileName(file.c_str());
    writer->Write();
  }
  return file;
}

struct Case
{
  std::string name;
  std::vector<std::string> viewer;
  std::vector<std::string> bare;
};

void report(const Case& c, const Measurement& viewer, const Measurement& bare, bool timeTarget)
{
  if (viewer.failed || bare.failed)
  {
    std::printf("  %-26s : failed\n", c.name.c_str());
    return;
  }
  const double viewerSeconds = medianSeconds(viewer);
  const double bareSeconds = medianSeconds(bare);
  const double ratio = viewerSeconds / bareSeconds;
  const double extraMiB = medianPeakMiB(viewer) - medianPeakMiB(bare);
  std::printf("  %-26s : viewer %.3f s %6.1f MiB | bare %.3f s %6.1f MiB | time ratio %.2f%s | peak "
              "memory %+.1f MiB%s\n",
              c.name.c_str(), viewerSeconds, medianPeakMiB(viewer), bareSeconds, medianPeakMiB(bare), ratio,
              timeTarget ? (ratio <= k_TimeRatioTarget ? " (ok)" : " (above 1.3)") : "", extraMiB,
              extraMiB <= k_MemoryTargetMiB ? " (ok)" : " (above 40)");
}
} // namespace

int main()
{
  const long runs = envNumber("ZR_BENCH_RUNS", 5);
  const long triangles = envNumber("ZR_BENCH_TRIANGLES", 1000000);
  const fs::path dir = fs::temp_directory_path();
  const fs::path sphere = prepareSphere(dir, triangles);
  const fs::path viewerShot = dir / "zr-bench-viewer-shot.png";
  const fs::path bareShot = dir / "zr-bench-bare-shot.png";
  const std::string size = std::to_string(k_Width) + "x" + std::to_string(k_Height);
  const std::string width = std::to_string(k_Width);
  const std::string height = std::to_string(k_Height);

  const std::vector<Case> cases = {
      {"no file",
       {ZR_VIEWER_PATH, "--screenshot", viewerShot, "--size", size},
       {ZR_BARE_PATH, bareShot, width, height}},
      {sphere.filename().string(),
       {ZR_VIEWER_PATH, sphere, "--view", "outline", "--screenshot", viewerShot, "--size", size},
       {ZR_BARE_PATH, bareShot, width, height, sphere}},
      {"surface by " + std::string(k_CellArray),
       {ZR_VIEWER_PATH, sphere, "--view", "surface", "--color-by", k_CellArray, "--screenshot", viewerShot,
        "--size", size},
       {ZR_BARE_SURFACE_PATH, bareShot, width, height, sphere, k_CellArray}},
  };

  std::printf("Viewer: %s\nBare:   %s, %s\n%ld runs per program and case, medians:\n", ZR_VIEWER_PATH,
              ZR_BARE_PATH, ZR_BARE_SURFACE_PATH, runs);
  for (const Case& c : cases)
  {
    Measurement viewer;
    Measurement bare;
    Sample warmUp;
    viewer.failed = !runProcess(c.viewer, dir / "zr-bench-viewer.log", warmUp);
    bare.failed = !runProcess(c.bare, dir / "zr-bench-bare.log", warmUp);
    // Alternating order, so that a burst of load elsewhere on the machine hits both alike.
    for (long run = 0; run < runs && !viewer.failed && !bare.failed; ++run)
    {
      Sample a;
      Sample b;
      if (run % 2 == 0)
      {
        viewer.failed = !runProcess(c.viewer, dir / "zr-bench-viewer.log", a);
        bare.failed = !runProcess(c.bare, dir / "zr-bench-bare.log", b);
      }
      else
      {
        bare.failed = !runProcess(c.bare, dir / "zr-bench-bare.log", b);
        viewer.failed = !runProcess(c.viewer, dir / "zr-bench-viewer.log", a);
      }
      viewer.samples.push_back(a);
      bare.samples.push_back(b);
    }
    report(c, viewer, bare, &c != &cases.front());
  }
  std::printf("(Targets: time ratio <= %.1f with the file, peak memory at most %.0f MiB above the bare "
              "program.)\n",
              k_TimeRatioTarget, k_MemoryTargetMiB);
  return 0;
}
