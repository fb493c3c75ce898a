// Files of other writers and of a fuzzer: a valid sample is written, one object of it is spoiled with
// the HDF5 C API the way such files come, and the file bridge imports it. The spoiled object is named
// in the output pane, the rest of the file is loaded, and nothing crashes.
#include "pipeline/FileToVXBridge.h"

#include "common/ZRTestStructures.h"
#include "data_bridge/zr_contract/KestrixIO.h"
#include "pipeline/VXDataSource.h"

#include <vtkDataSet.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <hdf5.h>

#include <functional>
#include <limits>
#include <map>

namespace
{
// Ids above those of the sample, for objects the edits add.
constexpr std::uint64_t k_NewId = 1000;

struct Damage
{
  const char* name;
  std::function<void(hid_t file)> edit;
  // Every text must appear in one output line.
  std::vector<QString> expectedTexts;
  // The geometries that must be in the tree without a dataset.
  std::vector<QString> withoutDataSet;
  // The geometries that must be missing from the tree.
  std::vector<QString> leftOut;
};

void overwriteElement(hid_t file, const char* path, hsize_t index, std::uint64_t value)
{
  const hid_t dataset = H5Dopen2(file, path, H5P_DEFAULT);
  ASSERT_GE(dataset, 0) << path;
  const hid_t space = H5Dget_space(dataset);
  const hsize_t one = 1;
  H5Sselect_hyperslab(space, H5S_SELECT_SET, &index, nullptr, &one, nullptr);
  const hid_t memory = H5Screate_simple(1, &one, nullptr);
  EXPECT_GE(H5Dwrite(dataset, H5T_NATIVE_UINT64, memory, space, H5P_DEFAULT, &value), 0);
  H5Sclose(memory);
  H5Sclose(space);
  H5Dclose(dataset);
}

void replaceAttribute(hid_t object, const char* name, hid_t type, std::vector<hsize_t> dims,
                      const void* values)
{
  if (H5Aexists(object, name) > 0)
  {
    H5Adelete(object, name);
  }
  const hid_t space = dims.empty() ? H5Screate(H5S_SCALAR)
                                   : H5Screate_simple(static_cast<int>(dims.size()), dims.data(), nullptr);
  const hid_t attribute = H5Acreate2(object, name, type, space, H5P_DEFAULT, H5P_DEFAULT);
  EXPECT_GE(H5Awrite(attribute, type, values), 0) << name;
  H5Aclose(attribute);
  H5Sclose(space);
}

void writeUInt64Attribute(hid_t file, const char* objectPath, const char* name,
                          const std::vector<std::uint64_t>& values)
{
  const hid_t object = H5Oopen(file, objectPath, H5P_DEFAULT);
  ASSERT_GE(object, 0) << objectPath;
  replaceAttribute(object, name, H5T_NATIVE_UINT64, {values.size()}, values.data());
  H5Oclose(object);
}

void writeStringAttribute(hid_t file, const char* objectPath, const char* name, const std::string& text,
                          hsize_t copies = 0)
{
  const hid_t object = H5Oopen(file, objectPath, H5P_DEFAULT);
  ASSERT_GE(object, 0) << objectPath;
  const hid_t type = H5Tcopy(H5T_C_S1);
  H5Tset_size(type, text.size());
  std::string values;
  for (hsize_t i = 0; i < std::max<hsize_t>(copies, 1); ++i)
  {
    values += text;
  }
  replaceAttribute(object, name, type, copies == 0 ? std::vector<hsize_t>{} : std::vector<hsize_t>{copies},
                   values.data());
  H5Tclose(type);
  H5Oclose(object);
}

std::uint64_t readObjectId(hid_t file, const char* objectPath)
{
  std::uint64_t id = 0;
  const hid_t object = H5Oopen(file, objectPath, H5P_DEFAULT);
  const hid_t attribute = H5Aopen(object, "ObjectId", H5P_DEFAULT);
  H5Aread(attribute, H5T_NATIVE_UINT64, &id);
  H5Aclose(attribute);
  H5Oclose(object);
  return id;
}

std::vector<Damage> damages()
{
  return {
      {"vertex id far past the vertex count",
       [](hid_t file) { overwriteElement(file, "/DataStructure/Scan/Surface/SharedFaceList", 4, 4000000); },
       {"'Surface'", "vertex id 4000000"},
       {"Surface"},
       {}},
      {"negative vertex id",
       [](hid_t file)
       {
         overwriteElement(file, "/DataStructure/Scan/Tets/SharedPolyhedronList", 2,
                          std::numeric_limits<std::uint64_t>::max());
       },
       {"'Tets'", "vertex id -1"},
       {"Tets"},
       {}},
      {"group in place of the bounds array",
       [](hid_t file)
       {
         const std::uint64_t id = readObjectId(file, "/DataStructure/Scan/Rect/X Bounds");
         H5Ldelete(file, "/DataStructure/Scan/Rect/X Bounds", H5P_DEFAULT);
         const hid_t group =
             H5Gcreate2(file, "/DataStructure/Scan/Rect/X Bounds", H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
         H5Gclose(group);
         writeStringAttribute(file, "/DataStructure/Scan/Rect/X Bounds", "ObjectType", "DataGroup");
         writeUInt64Attribute(file, "/DataStructure/Scan/Rect/X Bounds", "ObjectId", {id});
       },
       {"'Rect'", "X bounds", "DataGroup"},
       {"Rect"},
       {}},
      {"object id of the wrong type",
       [](hid_t file) { writeStringAttribute(file, "/DataStructure/Scan/Centroids", "ObjectId", "seven"); },
       {"'/DataStructure/Scan/Centroids'", "left out with its members"},
       {},
       {"Centroids"}},
      {"object type of the wrong shape",
       [](hid_t file)
       { writeStringAttribute(file, "/DataStructure/Scan/Edges", "ObjectType", "EdgeGeom", 64); },
       {"'/DataStructure/Scan/Edges'", "left out"},
       {},
       {"Edges"}},
      {"tuple shape whose product overflows to the stored count",
       [](hid_t file)
       {
         // (2^63 + 2) * 2 is 4 modulo 2^64: the true vertex count of the quads.
         writeUInt64Attribute(file, "/DataStructure/Scan/Quads/SharedVertexList", "TupleShape",
                              {(std::uint64_t(1) << 63) + 2, 2});
       },
       {"'/DataStructure/Scan/Quads/SharedVertexList'", "64 bits"},
       {"Quads"},
       {}},
      {"unknown object type",
       [](hid_t file) { writeStringAttribute(file, "/DataStructure/Scan/Hexes", "ObjectType", "PrismGeom"); },
       {"'/DataStructure/Scan/Hexes'", "PrismGeom"},
       {},
       {"Hexes"}},
      {"dangling link",
       [](hid_t file)
       {
         const hid_t scan = H5Gopen2(file, "/DataStructure/Scan", H5P_DEFAULT);
         H5Lcreate_soft("/DataStructure/Nowhere", scan, "Lost", H5P_DEFAULT, H5P_DEFAULT);
         H5Lcreate_external("missing.kestrix", "/DataStructure", scan, "Elsewhere", H5P_DEFAULT, H5P_DEFAULT);
         H5Gclose(scan);
       },
       {"'/DataStructure/Scan/Lost'"},
       {},
       {}},
      {"image dimensions overwritten",
       [](hid_t file) {
         writeUInt64Attribute(file, "/DataStructure/Scan/Grains", "Dimensions", {1ull << 40, 2, 2});
       },
       {"'Grains'", "too large"},
       {"Grains"},
       {}},
      {"vertex list of the wrong type",
       [](hid_t file)
       {
         const hid_t dataset = H5Dopen2(file, "/DataStructure/Scan/Edges/SharedEdgeList", H5P_DEFAULT);
         const std::uint64_t id = readObjectId(file, "/DataStructure/Scan/Edges/SharedEdgeList");
         H5Dclose(dataset);
         // The edge geometry's vertex reference now names its edge list, a uint64 array of 2 components.
         writeUInt64Attribute(file, "/DataStructure/Scan/Edges", "VerticesId", {id});
       },
       {"'Edges'", "vertex list", "DataArray<uint64>"},
       {"Edges"},
       {}},
  };
}

QString outputText(const QStringList& lines)
{
  return lines.join(QLatin1Char('\n'));
}
} // namespace

TEST(KestrixDamagedImport, EachDamageIsNamedAndTheRestIsLoaded)
{
  const QStringList allGeometries = {"Grains",  "Rect",  "Centroids", "Edges",
                                     "Surface", "Quads", "Tets",      "Hexes"};
  QTemporaryDir dir;
  for (const Damage& damage : damages())
  {
    SCOPED_TRACE(damage.name);
    const QString path = dir.filePath(QStringLiteral("damaged.kestrix"));
    ASSERT_TRUE(
        zr::core::KESTRIX::WriteDataStructureToFile(path.toStdString(), *ZRTest::MakeAllKinds()).valid());
    {
      const hid_t file = H5Fopen(path.toStdString().c_str(), H5F_ACC_RDWR, H5P_DEFAULT);
      ASSERT_GE(file, 0);
      damage.edit(file);
      H5Fclose(file);
    }

    FileToVXBridge bridge;
    QStringList output;
    QObject::connect(&bridge, &VXBridgeObject::sendOutputMessage,
                     [&output](const QString& text) { output << text; });
    bridge.import(path);
    bridge.setWatchFile(false);

    bool named = false;
    for (const QString& line : output)
    {
      bool all = true;
      for (const QString& text : damage.expectedTexts)
      {
        all = all && line.contains(text);
      }
      named = named || all;
    }
    EXPECT_TRUE(named) << outputText(output).toStdString();

    std::map<QString, VXDataSource*> sources;
    for (VXDataSource* source : bridge.dataSources())
    {
      sources[source->baseName()] = source;
    }
    for (const QString& geometry : allGeometries)
    {
      const bool leftOut =
          std::find(damage.leftOut.begin(), damage.leftOut.end(), geometry) != damage.leftOut.end();
      const bool noDataSet = std::find(damage.withoutDataSet.begin(), damage.withoutDataSet.end(),
                                       geometry) != damage.withoutDataSet.end();
      auto found = sources.find(geometry);
      if (leftOut)
      {
        EXPECT_EQ(found, sources.end()) << geometry.toStdString();
        continue;
      }
      // A geometry without a dataset keeps its own name in the tree.
      ASSERT_NE(found, sources.end()) << geometry.toStdString() << "\n" << outputText(output).toStdString();
      EXPECT_EQ(found->second->getOutput() == nullptr, noDataSet) << geometry.toStdString();
    }
    EXPECT_EQ(sources.size(), static_cast<std::size_t>(allGeometries.size()) - damage.leftOut.size());
  }
}

TEST(KestrixDamagedImport, AnUndamagedSampleSaysNothing)
{
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("sample.kestrix"));
  ASSERT_TRUE(
      zr::core::KESTRIX::WriteDataStructureToFile(path.toStdString(), *ZRTest::MakeAllKinds()).valid());
  FileToVXBridge bridge;
  QStringList output;
  QObject::connect(&bridge, &VXBridgeObject::sendOutputMessage,
                   [&output](const QString& text) { output << text; });
  bridge.import(path);
  bridge.setWatchFile(false);
  EXPECT_TRUE(output.isEmpty()) << outputText(output).toStdString();
  ASSERT_EQ(bridge.dataSources().size(), 8);
  for (VXDataSource* source : bridge.dataSources())
  {
    EXPECT_NE(source->getOutput(), nullptr) << source->baseName().toStdString();
  }
}
