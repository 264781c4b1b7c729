// What the library holds of the memory of documents that are gone, and of those that change.

#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "qenzor/platform/memory.h"
#include "qenzor/qen/line_obj.h"
#include "tests/support/large_map.h"
#include "tests/support/resident_memory.h"

namespace qenzor::testing {
namespace {

constexpr std::ptrdiff_t kMostHeld = 32 * kMib;

TEST(Footprint, ObjectsThatOutliveTheirDocumentsHoldLittleElse) {
  const Bytes bytes = LargeMapBytes(6000, 20);
  ExpectAtMost(kMostHeld, [&] {
    std::vector<std::unique_ptr<CAddedObjInfoSet>> kept;
    const std::ptrdiff_t before = ResidentBytes();
    for (std::uint32_t i = 0; i < 500; ++i) {
      CQen map;
      if (!map.Read(bytes.data(), bytes.size())) return kMostHeld + 1;
      kept.push_back(std::move(LinesOf(map).GetElem(100 * (i % 60) + 99)->AddedObjInfoSet));
    }
    return kept.back() == nullptr ? kMostHeld + 1 : ResidentBytes() - before;
  });
}

TEST(Footprint, AllButSomeIsGivenBackWithTheLastDocument) {
  const Bytes bytes = LargeMapBytes(100000, 40);
  ExpectAtMost(kMostHeld, [&] {
    const std::ptrdiff_t before = ResidentBytes();
    {
      CQen map;
      CQenEdit edit;
      if (!map.Read(bytes.data(), bytes.size())) return kMostHeld + 1;
      edit.QenDataToEditData(&map);
      const std::unique_ptr<CQen> clone(map.Clone());
      const std::unique_ptr<CQen> chunk(edit.EditDataToQenData());
    }
    return ResidentBytes() - before;
  });
}

std::ptrdiff_t HeldAfterADocument(const Bytes& bytes, std::ptrdiff_t before) {
  CQen map;
  static_cast<void>(map.Read(bytes.data(), bytes.size()));
  map.MapData.reset();
  return ResidentBytes() - before;
}

TEST(Footprint, WhatIsKeptCanBeGivenBack) {
  const Bytes bytes = LargeMapBytes(100000, 20);
  ExpectAtMost(4 * kMib, [&] {
    const std::ptrdiff_t before = ResidentBytes();
    if (HeldAfterADocument(bytes, before) < 8 * kMib) return 100 * kMib;
    ReleaseKeptMemory();
    return ResidentBytes() - before;
  });
}

TEST(Footprint, WhatIsKeptCanBeLimited) {
  const Bytes bytes = LargeMapBytes(100000, 20);
  ExpectAtMost(4 * kMib, [&] {
    SetKeptMemory(0);
    return HeldAfterADocument(bytes, ResidentBytes());
  });
}

TEST(Footprint, ArraysThatAreReplacedDoNotPileUp) {
  const Bytes bytes = LargeMapBytes(30000, 100);
  constexpr std::ptrdiff_t kPerCentOfStart = 200;
  ExpectAtMost(kPerCentOfStart, [&] {
    const std::ptrdiff_t before = ResidentBytes();
    CQen map;
    if (!map.Read(bytes.data(), bytes.size())) return kPerCentOfStart + 1;
    const std::ptrdiff_t start = ResidentBytes() - before;
    CObjSet& lines = LinesOf(map);
    std::mt19937 random(1);
    std::ptrdiff_t most = 0;
    for (int i = 0; i < 600000; ++i) {
      auto& line = static_cast<CLineObj&>(
          *lines.GetElem(static_cast<std::uint32_t>(random() % lines.GetElemCount())));
      line.Pt.Reset(static_cast<std::uint16_t>(1 + random() % 100));
      std::fill(line.Pt.begin(), line.Pt.end(), CPoint{3, 4});
      if (i % 10000 == 0) most = std::max(most, ResidentBytes() - before);
    }
    return 100 * most / start;
  });
}

TEST(Footprint, AnObjectInEachOfManyThreadsTakesLittleBesideALargeDocument) {
  const Bytes bytes = LargeMapBytes(300000, 20);
  ExpectAtMost(kMostHeld, [&] {
    CQen map;
    if (!map.Read(bytes.data(), bytes.size())) return kMostHeld + 1;
    const std::ptrdiff_t before = ResidentBytes();
    std::vector<std::unique_ptr<CLineObj>> objects(200);
    for (std::unique_ptr<CLineObj>& object : objects)
      std::thread([&object] { object = std::make_unique<CLineObj>(); }).join();
    return ResidentBytes() - before;
  });
}

TEST(Footprint, SmallDocumentsTakeAboutWhatTheyHold) {
  constexpr std::size_t kDocuments = 2000;
  const Bytes bytes = LargeMapBytes(10, 10);
  ExpectAtMost(kDocuments * 8192, [&] {
    std::vector<CQen> maps(kDocuments);
    const std::ptrdiff_t before = ResidentBytes();
    for (CQen& map : maps) static_cast<void>(map.Read(bytes.data(), bytes.size()));
    return ResidentBytes() - before;
  });
}

}  // namespace
}  // namespace qenzor::testing
