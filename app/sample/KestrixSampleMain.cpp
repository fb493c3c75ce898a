// kestrix-sample OUT.kestrix [--size N]: writes a synthetic grain microstructure with every geometry kind.
#include "app/sample/GrainMicrostructure.h"
#include "app/sample/SampleStructureBuilder.h"

#include "data_bridge/zr_contract/KestrixIO.h"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>

namespace
{
constexpr std::uint64_t k_RandomStart = 20240517;
constexpr unsigned long k_DefaultSize = 64;
constexpr unsigned long k_MaxSize = 2048;

int Usage(const std::string& problem)
{
  if (!problem.empty())
  {
    std::cerr << "kestrix-sample: " << problem << "\n";
  }
  std::cerr
      << "Usage: kestrix-sample OUT.kestrix [--size N]\n"
         "  Writes a synthetic grain microstructure (image, rectilinear grid, vertex, edge, triangle, quad,\n"
         "  tetrahedral and hexahedral geometries) to OUT.kestrix. N is the image edge in cells\n"
         "  (default "
      << k_DefaultSize << ", at least 2, at most " << k_MaxSize << ").\n";
  return problem.empty() ? 0 : 2;
}
} // namespace

int main(int argc, char* argv[])
{
  std::string output;
  unsigned long size = k_DefaultSize;
  for (int i = 1; i < argc; ++i)
  {
    const std::string argument = argv[i];
    if (argument == "--help" || argument == "-h")
    {
      return Usage("");
    }
    if (argument == "--size")
    {
      if (i + 1 >= argc)
      {
        return Usage("--size needs a number");
      }
      char* end = nullptr;
      size = std::strtoul(argv[++i], &end, 10);
      if (end == nullptr || *end != '\0' || size < 2 || size > k_MaxSize)
      {
        return Usage(std::string("invalid size '") + argv[i] + "'");
      }
      continue;
    }
    if (!argument.empty() && argument[0] == '-')
    {
      return Usage("unknown option '" + argument + "'");
    }
    if (!output.empty())
    {
      return Usage("more than one output file given");
    }
    output = argument;
  }
  if (output.empty())
  {
    return Usage("no output file given");
  }

  const auto start = std::chrono::steady_clock::now();
  auto microstructure = std::make_shared<zr::sample::GrainMicrostructure>(size, k_RandomStart);
  const zr::core::DataStructure dataStructure = zr::sample::SampleStructureBuilder(microstructure).build();
  const zr::core::Result<> written = zr::core::KESTRIX::WriteDataStructureToFile(output, dataStructure);
  if (!written.valid())
  {
    for (const auto& error : written.errors())
    {
      std::cerr << "kestrix-sample: " << error.message << "\n";
    }
    return 1;
  }
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::cout << "Wrote " << output << " (" << size << "^3 cells, " << microstructure->grainCount()
            << " grains) in " << seconds << " s\n";
  return 0;
}
