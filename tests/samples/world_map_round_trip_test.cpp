#include "qenzor/platform/code_page.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "tests/samples/map_walk.h"
#include "tests/samples/samples.h"

namespace qenzor::samples {
namespace {

/// What XML does not carry over is taken out of a map.
struct Losses {
  int urls = 0;
  std::vector<CStringW> labels;  ///< before
};

Losses LoseWhatXmlLoses(CQenEdit& map) {
  Losses losses;
  ForEachObject(map, [&losses](const ObjectPlace&, CAbstractObjEdit& object) {
    if (auto* label = dynamic_cast<CCmbLblObjEdit*>(&object); label != nullptr) {
      const CStringW kept = WidenText(NarrowText(label->Text));
      if (kept != label->Text) losses.labels.push_back(label->Text);
      label->Text = kept;
    }
    if (!object.AddedObjInfoSet) return;
    for (const auto& info : *object.AddedObjInfoSet->GetElemPtr()) {
      dynamic_cast<CUrlInfoEdit&>(*info).Text.clear();
      ++losses.urls;
    }
  });
  return losses;
}

/// The lines of a text; those of URLs without the URL.
std::string WithoutUrls(std::string xml) {
  const std::string url = "https://example.org/country/";
  for (auto at = xml.find(url); at != std::string::npos; at = xml.find(url, at))
    xml.erase(at, xml.find('<', at) - at);
  return xml;
}

class WorldMapRoundTrip : public testing::Test {
 protected:
  void SetUp() override {
    m_bytes = BytesOf(PathOf("world.qen"));
    ASSERT_TRUE(m_map.Read(PathOf("world.qen")));
  }

  Bytes m_bytes;
  CQen m_map;
};

TEST_F(WorldMapRoundTrip, ReadAndWritten) { EXPECT_EQ(BytesOf(m_map), m_bytes); }

TEST_F(WorldMapRoundTrip, ReadFromAnOpenFileAndWrittenToOne) {
  CMemFile source(m_bytes);
  CQen map;
  ASSERT_TRUE(map.Read(&source));
  const TemporaryFile file;
  ASSERT_TRUE(map.Write(file.Path()));
  EXPECT_EQ(BytesOf(file.Path()), m_bytes);
}

TEST_F(WorldMapRoundTrip, CopiedAsChunks) {
  CQen copy;
  copy.DeepCopy(&m_map);
  m_map.MapData.reset();
  EXPECT_EQ(BytesOf(copy), m_bytes);
}

TEST_F(WorldMapRoundTrip, Cloned) {
  const std::unique_ptr<CQen> clone(m_map.Clone());
  m_map.MapData.reset();
  EXPECT_EQ(BytesOf(*clone), m_bytes);
}

TEST_F(WorldMapRoundTrip, TurnedIntoTheEditFormAndBack) {
  CQenEdit edit;
  edit.QenDataToEditData(&m_map);
  m_map.MapData.reset();
  EXPECT_EQ(BytesOf(edit), m_bytes);
}

TEST_F(WorldMapRoundTrip, ClonedInTheEditForm) {
  CQenEdit edit;
  edit.QenDataToEditData(&m_map);
  ASSERT_TRUE(edit.SetSubChunkEdit(edit.MapData->Clone()));
  EXPECT_EQ(BytesOf(edit), m_bytes);
}

TEST_F(WorldMapRoundTrip, XmlLosesOnlyUrlsAndWhatTheCodePageLacks) {
  const TemporaryFile xml;
  CQenTextConverter converter;
  ASSERT_TRUE(converter.ConvertChunkToText(xml.Path(), m_map, 0));
  const std::unique_ptr<CQenEdit> read_back(converter.ConvertTextToQenEdit(xml.Path()));
  ASSERT_NE(read_back, nullptr);

  CQenEdit expected;
  expected.QenDataToEditData(&m_map);
  const Losses losses = LoseWhatXmlLoses(expected);
  EXPECT_EQ(losses.urls, 177);
  EXPECT_EQ(losses.labels, std::vector{CStringW(u"Côte d'Ivoire")});
  EXPECT_EQ(BytesOf(*read_back), BytesOf(expected));
}

TEST_F(WorldMapRoundTrip, XmlOfWhatWasReadFromXmlDiffersOnlyInUrls) {
  const TemporaryFile file;
  CQenTextConverter converter;
  ASSERT_TRUE(converter.ConvertChunkToText(file.Path(), m_map, 0));
  const std::unique_ptr<CQenEdit> edit(converter.ConvertTextToQenEdit(file.Path()));
  ASSERT_NE(edit, nullptr);
  const std::unique_ptr<CQen> read_back(edit->EditDataToQenData());
  const std::string first = TextOf(file.Path());
  const std::string second = XmlOf<CQenTextConverter>(*read_back);
  EXPECT_NE(first, second);
  EXPECT_EQ(WithoutUrls(first), second);
}

}  // namespace
}  // namespace qenzor::samples
