// What programs do with the objects of a document: edit objects are made, copied, put into each
// other, filled from chunks and from elements, in an order that the bytes behind the root give, and
// every one of them then goes from edit to bytes to tree to edit to text and back.

#include <tinyxml.h>

#include <array>
#include <utility>

#include "qenzor/catalogue.h"
#include "qenzor/core/chunk_factory.h"
#include "qenzor/edit/chunk_edit_factory.h"
#include "qenzor/text/chunk_text_converter_factory.h"
#include "support/chunk_hooks.h"
#include "support/chunk_tree.h"
#include "support/documents.h"
#include "support/text_file.h"

namespace {

using Chunk = std::unique_ptr<qenzor::CAbstractChunk>;
using Edit = std::unique_ptr<qenzor::CAbstractChunkEdit>;

template <class Row>
Edit NewEdit() {
  return std::make_unique<typename Row::Edit>();
}

/// An empty edit object of any class.
Edit AnyEdit(std::uint8_t choice) {
  static constexpr auto kMakers = qenzor::WithAllClasses(
      []<class... Rows>() { return std::array<Edit (*)(), sizeof...(Rows)>{&NewEdit<Rows>...}; });
  return kMakers[choice % kMakers.size()]();
}

fuzz::Bytes StoredBytes(qenzor::CAbstractChunk& chunk) {
  qenzor::CMemFile file;
  fuzz::Require(chunk.Write(&file, true));
  return file.GetBytes();
}

Chunk FromBytes(const fuzz::Bytes& bytes) {
  return Chunk(
      qenzor::CChunkFactory::Create(bytes.data(), static_cast<std::uint32_t>(bytes.size())));
}

Chunk ThroughEdit(qenzor::CAbstractChunk& chunk) {
  const Edit edit(qenzor::CChunkEditFactory::CreateInstance(&chunk));
  fuzz::Require(edit != nullptr);
  Chunk again(edit->EditDataToChunkData());
  fuzz::Require(again != nullptr);
  return again;
}

/// The element that the chunk is written as, read into a new edit object of its class.
Edit ThroughText(qenzor::CAbstractChunk& chunk) {
  const std::unique_ptr<qenzor::CAbstractChunkTextConverter> converter(
      qenzor::CChunkTextConverterFactory::CreateInstance(&chunk));
  fuzz::Require(converter != nullptr);
  qenzor::CMemFile sink;
  qenzor::CStdioFile file(sink);
  qenzor::CAbstractChunkTextConverter::ConvertChunkToString(file, "Any", &chunk, 0);
  file.Close();
  const std::string text(sink.GetBytes().begin(), sink.GetBytes().end());
  TiXmlDocument xml;
  xml.Parse(text.c_str(), nullptr, TIXML_ENCODING_LEGACY);
  fuzz::Require(xml.RootElement() != nullptr);
  Edit edit(converter->ConvertStringToChunkEdit(xml.RootElement()));
  fuzz::Require(edit != nullptr);
  return edit;
}

/// Whatever an edit object holds can be taken through all forms. A draw attribute without an index
/// set gains one with its first edit form; from then on sizes stay.
void CloseCircle(qenzor::CAbstractChunkEdit& edit) {
  const Chunk chunk(edit.EditDataToChunkData());
  fuzz::Require(chunk != nullptr);
  const fuzz::Bytes bytes = StoredBytes(*chunk);
  const Chunk read = FromBytes(bytes);
  if (read == nullptr) return;  // names longer than their block are written but do not read again
  const Chunk first = ThroughEdit(*read);
  const Chunk second = ThroughEdit(*first);
  fuzz::Require(StoredBytes(*second).size() == StoredBytes(*first).size());
  const Chunk told(ThroughText(*read)->EditDataToChunkData());
  fuzz::Require(told != nullptr);
  const Chunk twice(ThroughText(*told)->EditDataToChunkData());
  fuzz::Require(twice != nullptr);
}

/// Where there is nothing, nothing comes of it, and the edit object is empty then.
void TakeNothing(qenzor::CAbstractChunkEdit& edit) {
  using qenzor::CChunkEditFactory;
  using qenzor::CChunkTextConverterFactory;
  edit.DeepCopy(nullptr);
  edit.ChunkDataToEditData(nullptr);
  fuzz::Require(!edit.SetSubChunkEdit(nullptr));
  fuzz::Require(CChunkEditFactory::CreateInstance(nullptr) == nullptr);
  fuzz::Require(CChunkEditFactory::CreateInitInstance(nullptr) == nullptr);
  qenzor::CAbstractChunk* const none = nullptr;
  fuzz::Require(CChunkTextConverterFactory::CreateInstance(none) == nullptr);
  const Chunk chunk(edit.EditDataToChunkData());
  const std::unique_ptr<qenzor::CAbstractChunkTextConverter> converter(
      CChunkTextConverterFactory::CreateInstance(chunk.get()));
  fuzz::Require(converter != nullptr);
  converter->SetChunkEditParam(&edit, nullptr);
  converter->SetChunkEditParam(nullptr, nullptr);
  fuzz::Require(converter->ConvertStringToChunkEdit(nullptr) == nullptr);
}

/// The objects that a program has in its hands, the last one on top.
class Hands {
 public:
  void Do(std::uint8_t what, std::uint8_t choice) {
    constexpr std::size_t kMost = 16;
    if (m_edits.size() < 2 || (what % 8 == 0 && m_edits.size() < kMost)) {
      m_edits.push_back(AnyEdit(choice));
      return;
    }
    Edit& top = m_edits.back();
    Edit& other = m_edits[choice % (m_edits.size() - 1)];
    switch (what % 8) {
      case 1:
        Push(top->Clone());
        break;
      case 2: {  // one below the other
        Edit child = std::move(top);
        m_edits.pop_back();
        m_edits.back()->SetSubChunkEdit(child.release());
        break;
      }
      case 3:
        other->DeepCopy(top.get());
        break;
      case 4: {  // from a chunk of another class, mostly
        const Chunk chunk(top->EditDataToChunkData());
        other->ChunkDataToEditData(chunk.get());
        break;
      }
      case 5: {
        const Chunk chunk(top->EditDataToChunkData());
        Push(qenzor::CChunkEditFactory::CreateInstance(chunk.get()));
        break;
      }
      case 6:
        std::swap(top, other);
        break;
      default:
        if (choice % 2 == 0)
          top->Release();
        else
          TakeNothing(*top);
    }
  }

  void Push(qenzor::CAbstractChunkEdit* edit) {
    fuzz::Require(edit != nullptr);
    m_edits.emplace_back(edit);
  }

  std::vector<Edit>& Edits() { return m_edits; }

 private:
  std::vector<Edit> m_edits;
};

struct QenText : qenzor::CQenTextConverter {
  static void TakeNothing(qenzor::CQenEdit& edit) {
    QenText text;
    for (qenzor::CQenEdit* given : {&edit, static_cast<qenzor::CQenEdit*>(nullptr)}) {
      text.SetQenEditParam(given, nullptr);
      text.SetQenFileInfoParam(given, nullptr);
    }
  }
};

struct ZorText : qenzor::CZorTextConverter {
  static void TakeNothing(qenzor::CZorEdit& edit) {
    ZorText text;
    for (qenzor::CZorEdit* given : {&edit, static_cast<qenzor::CZorEdit*>(nullptr)}) {
      text.SetZorEditParam(given, nullptr);
      text.SetZorFileInfoParam(given, nullptr);
    }
  }
};

template <class Kind>
void Play(std::span<const std::uint8_t> input) {
  typename Kind::Document document;
  if (!document.Read(input.data(), static_cast<std::uint32_t>(input.size()))) return;
  typename Kind::Edit edit;
  Kind::FillEdit(edit, document);
  std::conditional_t<std::is_same_v<Kind, fuzz::Qen>, QenText, ZorText>::TakeNothing(edit);
  Hands hands;
  // The parts of the document come first.
  const fuzz::ChunkDocument tree = fuzz::ParseDocument(input);
  const fuzz::Bytes& moves = tree.Rest;
  qenzor::CMarkElem mark;
  std::uint32_t consumed = 0;
  if (mark.Read(moves.data(), static_cast<std::uint32_t>(moves.size()), consumed))
    fuzz::Require(consumed == mark.GetWriteDataSize() && consumed <= moves.size());
  for (std::size_t at = 0; at + 1 < moves.size() && at < 64; at += 2) {
    if (at == 0) {
      const fuzz::Bytes root = fuzz::WriteDocument({{0}, tree.Root, {}});
      const Chunk chunk = FromBytes({root.begin() + 1, root.end()});
      if (chunk != nullptr)
        if (auto* form = qenzor::CChunkEditFactory::CreateInstance(chunk.get())) hands.Push(form);
    }
    hands.Do(moves[at], moves[at + 1]);
  }
  for (const Edit& held : hands.Edits()) CloseCircle(*held);
  for (Edit& held : hands.Edits()) {
    // Draw data stay with the caller; the document's edit form shares their sets.
    const bool stays = dynamic_cast<qenzor::CZorDrawDataEdit*>(held.get()) != nullptr &&
                       std::is_same_v<Kind, fuzz::Zor>;
    edit.SetSubChunkEdit(stays ? held.get() : held.release());
  }
  const std::unique_ptr<typename Kind::Document> made(Kind::ToDocument(edit));
  fuzz::Require(made != nullptr);
  const fuzz::Bytes text = fuzz::Text<Kind>(*made);
  const std::unique_ptr<typename Kind::Edit> told(Kind::FromText(fuzz::TextFile(text)));
  fuzz::Require(told != nullptr);
  const std::unique_ptr<typename Kind::Document> back(Kind::ToDocument(*told));
  fuzz::Require(back != nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> bytes(data, data + size);
  fuzz::WithKindOf(bytes, [&]<class Kind>(Kind) { Play<Kind>(bytes); });
  return 0;
}
