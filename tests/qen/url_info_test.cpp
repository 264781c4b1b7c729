#include "qenzor/qen/url_info.h"

#include <gtest/gtest.h>

#include "qenzor/core/unknown_chunk.h"
#include "qenzor/qen/line_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

CStringW UrlFrom(const std::string& url_info) {
  const auto edit =
      EditFromObjectXml("<LineObj><AddedObjInfoSet>" + url_info + "</AddedObjInfoSet></LineObj>");
  auto* url =
      dynamic_cast<CUrlInfoEdit*>(FirstObject<CLineObjEdit>(*edit)->AddedObjInfoSet->GetElem(0));
  return url == nullptr ? u"no url" : url->Text;
}

TEST(UrlInfo, AnEmptyUrlIsAZeroCount) {
  const Bytes bytes = Bytes().U32(19).U32(2).U16(0);
  for (const auto& url : {FromMemory<CUrlInfo>(bytes), FromFile<CUrlInfo>(bytes)}) {
    ASSERT_NE(url, nullptr);
    EXPECT_EQ(url->Text, u"");
    EXPECT_EQ(Written(*url), bytes);
  }
  CUrlInfo fresh;
  EXPECT_EQ(Written(fresh), bytes);
}

TEST(UrlInfo, AUrlOfTenUnitsTakesTwentyFourBytes) {
  CUrlInfo url;
  url.Text = u"0123456789";
  const Bytes written = Written(url);
  EXPECT_EQ(url.GetHeader().DataSize, 24U);
  EXPECT_EQ(written.Front(12), Bytes().U32(19).U32(24).U16(22).U16(0xFEFF));
  EXPECT_EQ(written, UrlBytes(u"0123456789"));
}

TEST(UrlInfo, ReadsAndWritesItsText) {
  const Bytes bytes = UrlBytes(u"http://a.b/\u5730");
  for (const auto& url : {FromMemory<CUrlInfo>(bytes), FromFile<CUrlInfo>(bytes)}) {
    ASSERT_NE(url, nullptr);
    EXPECT_EQ(url->Text, u"http://a.b/\u5730");
    EXPECT_EQ(Written(*url), bytes);
  }
}

TEST(UrlInfo, ABigEndianUrlIsTheSameText) {
  const Bytes bytes = Chunk(19, Bytes().SwappedText(u"ab\u5730"));
  for (const auto& url : {FromMemory<CUrlInfo>(bytes), FromFile<CUrlInfo>(bytes)}) {
    ASSERT_NE(url, nullptr);
    EXPECT_EQ(Written(*url), UrlBytes(u"ab\u5730"));
  }
}

TEST(UrlInfo, UnknownMarksAndSingleBytesGiveAnEmptyUrl) {
  for (const Bytes& text : {Bytes().U16(4).U16(7).U16('A'), Bytes().U16(1).U8(0xFF)}) {
    const auto memory = FromMemory<CUrlInfo>(Chunk(19, text));
    ASSERT_NE(memory, nullptr);
    EXPECT_EQ(memory->Text, u"");
    const auto file = FromFile<CUrlInfo>(Chunk(19, text));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->Text, u"");
  }
}

TEST(UrlInfo, AnyCountUpToTheLargestIsRead) {
  Bytes text = Bytes().U16(65535).U16(0xFEFF);
  for (int i = 0; i < 32766; ++i) text.U16('x');
  const Bytes bytes = Chunk(19, text.U8(0));
  for (const auto& url : {FromMemory<CUrlInfo>(bytes), FromFile<CUrlInfo>(bytes)}) {
    ASSERT_NE(url, nullptr);
    EXPECT_EQ(url->Text.size(), 32766U);
  }
}

TEST(UrlInfo, EveryMissingByteFails) {
  const Bytes whole = UrlBytes(u"ab");
  for (std::size_t size = 8; size < whole.size(); ++size) {
    EXPECT_EQ(FromMemory<CUrlInfo>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CUrlInfo>(whole.Front(size)), nullptr) << size;
  }
}

TEST(UrlInfo, AFileThatEndsTooSoonLeavesTheTextThatCame) {
  CMemFile file(UrlBytes(u"abcd").Front(16).vector());
  CUrlInfo url;
  url.Text = u"before";
  EXPECT_FALSE(url.Read(&file));
  EXPECT_EQ(url.Text, u"ab");
  CMemFile count(UrlBytes(u"abcd").Front(9).vector());
  EXPECT_FALSE(url.Read(&count));
  EXPECT_EQ(url.Text, u"");
}

TEST(UrlInfo, SubChunksAreDropped) {
  const auto url = FromMemory<CUrlInfo>(Chunk(19, Bytes().Text(u"u").Add(UrlBytes(u"v"))));
  ASSERT_NE(url, nullptr);
  EXPECT_EQ(Written(*url), UrlBytes(u"u"));
}

TEST(UrlInfo, CopiesAndEditRoundTripKeepEveryByte) {
  const Bytes bytes = UrlBytes(u"\u00E9 \u5730\n");
  const auto url = FromMemory<CUrlInfo>(bytes);
  EXPECT_EQ(Written(*ClonedFrom(*url), false), bytes);
  CUrlInfoEdit edit;
  edit.ChunkDataToEditData(url.get());
  const std::unique_ptr<CAbstractChunkEdit> copy(edit.Clone());
  EXPECT_EQ(Written(*ToChunk<CUrlInfo>(*copy)), bytes);
}

TEST(AddedObjInfoSet, WithoutElementsHasDataSizeFour) {
  CAddedObjInfoSet set;
  EXPECT_EQ(Written(set), Bytes().U32(1).U32(4).U32(0));
}

TEST(AddedObjInfoSet, DropsWhatIsNoAddedInfo) {
  const Bytes mixed = SetChunk(1, {Chunk(99, {}), UrlBytes(u"a"), LineBytes({}), UrlBytes(u"b")});
  for (const auto& set : {FromMemory<CAddedObjInfoSet>(mixed), FromFile<CAddedObjInfoSet>(mixed)}) {
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(Written(*set), SetChunk(1, {UrlBytes(u"a"), UrlBytes(u"b")}));
  }
  CAddedObjInfoSet set;
  set.SubChunkSet(0, new Counted<CUnKnownChunk>);
  EXPECT_EQ(Counted<CUnKnownChunk>::Alive(), 0);
}

TEST(UrlInfoText, TheElementStandsTwiceOnItsLine) {
  CUrlInfo url;
  url.Text = u"a b";
  CUrlInfoTextConverter converter;
  EXPECT_EQ(XmlOf(converter, &url, 2),
            "<Text>a&amp;nbsp;b</Text>\t\t<Text>a&amp;nbsp;b</Text>\r\n");
  EXPECT_EQ(XmlElement("UrlInfo", &url, 1),
            "\t<UrlInfo>\r\n<Text>a&amp;nbsp;b</Text>\t\t<Text>a&amp;nbsp;b</Text>\r\n"
            "\t</UrlInfo>\r\n");
}

TEST(UrlInfoText, AUrlDoesNotSurviveItsOwnXml) {
  CUrlInfo url;
  url.Text = u"http://a.b/";
  EXPECT_EQ(UrlFrom(XmlElement("UrlInfo", &url)), u"");
}

TEST(UrlInfoText, TextInTheElementItselfIsTheUrl) {
  EXPECT_EQ(UrlFrom("<UrlInfo>http://a.b/?c=1&amp;d=\x92\x6E</UrlInfo>"),
            u"http://a.b/?c=1&d=\u5730");
}

TEST(UrlInfoText, NoEscapeOfTheFormatsOwnIsUndone) {
  EXPECT_EQ(UrlFrom("<UrlInfo>a&amp;nbsp;b&lt;br /&gt;c</UrlInfo>"), u"a&nbsp;b<br />c");
}

TEST(UrlInfoText, AFirstChildThatIsNoTextGivesAnEmptyUrl) {
  EXPECT_EQ(UrlFrom("<UrlInfo><!-- c -->url</UrlInfo>"), u"");
  EXPECT_EQ(UrlFrom("<UrlInfo><b/>url</UrlInfo>"), u"");
  EXPECT_EQ(UrlFrom("<UrlInfo/>"), u"");
  EXPECT_EQ(UrlFrom("<UrlInfo>url<b/></UrlInfo>"), u"url");
}

}  // namespace
}  // namespace qenzor::testing
