// Uses the installed library as a stranger would: its classes, its templates, its exceptions and
// its run-time classes, all across the border of the shared library.

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include "qenzor/qen/qen.h"
#include "qenzor/version.h"
#include "qenzor/zor/zor.h"

namespace {

int failures = 0;

void Expect(bool holds, const char* what) {
  if (holds) return;
  std::cerr << "consumer: not so: " << what << '\n';
  ++failures;
}

/// A sink of the user's own that is always full.
class FullFile : public qenzor::CMemFile {
 public:
  void Write(const void* /*data*/, std::uint32_t /*size*/) override {
    throw qenzor::CFileException("full");
  }
};

std::unique_ptr<qenzor::CQen> MapWithSegments(std::uint32_t count) {
  qenzor::CQenEdit edit;
  edit.MapData = std::make_unique<qenzor::CQenMapDataEdit>();
  edit.MapData->MeshSegmentSet = std::make_unique<qenzor::CMeshSegmentSetEdit>();
  for (std::uint32_t i = 0; i < count; ++i)
    edit.MapData->MeshSegmentSet->AddElem(i, new qenzor::CMeshSegmentEdit);
  return std::unique_ptr<qenzor::CQen>(edit.EditDataToQenData());
}

std::uint32_t CountSegments(const qenzor::CQen& map) {
  if (!map.MapData || !map.MapData->MeshSegmentSet) return 0;
  return map.MapData->MeshSegmentSet->GetElemCount();
}

void DocumentComesBackFromBytes() {
  const auto map = MapWithSegments(3);
  qenzor::CMemFile file;
  Expect(map->Write(&file), "a document is written to memory");

  const auto& bytes = file.GetBytes();
  qenzor::CQen copy;
  Expect(copy.Read(bytes.data(), static_cast<std::uint32_t>(bytes.size())), "and read from there");
  Expect(CountSegments(copy) == 3, "with all its segments");
}

void DocumentComesBackFromXml() {
  const auto map = MapWithSegments(2);
  qenzor::CQenTextConverter converter;
  Expect(converter.ConvertChunkToText("consumer.xml", *map, 0), "a document becomes XML");
  const std::unique_ptr<qenzor::CQenEdit> edit(converter.ConvertTextToQenEdit("consumer.xml"));
  Expect(edit != nullptr, "the XML is read");
  if (!edit) return;
  const std::unique_ptr<qenzor::CQen> copy(edit->EditDataToQenData());
  Expect(CountSegments(*copy) == 2, "with all its segments");
}

void ExceptionCrossesTheBorder() {
  const auto map = MapWithSegments(1);
  FullFile full;
  qenzor::CStdioFile text(full);
  bool caught = false;
  try {
    qenzor::CQenTextConverter().ConvertChunkToText(text, *map, 0);
    text.Flush();
  } catch (const qenzor::CFileException&) {
    caught = true;
  }
  Expect(caught, "a full sink is told by CFileException");
}

void ClassesAreKnownAcrossTheBorder() {
  const auto map = MapWithSegments(1);
  qenzor::CObject* object = map->MapData.get();
  Expect(qenzor::class_cast<qenzor::CQenMapData>(object) != nullptr, "a class is known");
  Expect(qenzor::class_cast<qenzor::CMeshSegment>(object) == nullptr, "and told from others");
  Expect(dynamic_cast<qenzor::CAbstractChunk*>(object) != nullptr, "dynamic_cast agrees");
}

void VersionIsToldAlike() {
  Expect(std::string(QENZOR_VERSION) == FOUND_VERSION, "the package has the header's version");
  Expect(std::to_string(QENZOR_VERSION_MAJOR) + '.' + std::to_string(QENZOR_VERSION_MINOR) + '.' +
                 std::to_string(QENZOR_VERSION_PATCH) ==
             QENZOR_VERSION,
         "the numbers are those of the text");
#if QENZOR_VERSION_NUMBER < 100
  Expect(false, "the preprocessor can compare");
#endif
}

}  // namespace

int main() {
  VersionIsToldAlike();
  Expect(!qenzor::CQen().Read("no-such-file.qen"), "a missing map is told");
  Expect(!qenzor::CZor().Read("no-such-file.zor"), "missing draw data is told");
  DocumentComesBackFromBytes();
  DocumentComesBackFromXml();
  ExceptionCrossesTheBorder();
  ClassesAreKnownAcrossTheBorder();
  return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
