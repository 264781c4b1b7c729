#pragma once

// The documents of both kinds and forms, as templates over what differs.

#include "documents.h"
#include "qenzor/platform/file.h"
#include "qenzor/storable.h"

namespace qenzor::python {

struct QenKind {
  using Chunks = CQen;
  using Edit = CQenEdit;
  using Info = QenFileInfo;
  static constexpr BinaryKind kKind = BinaryKind::kQen;

  static const ClassInfo& InfoClass() { return QenInfoClass(); }
  static const ClassInfo& RootClass(bool editable) { return QenRootClass(editable); }
  static void* RootOf(Chunks& map) { return map.MapData.get(); }
  static void* RootOf(Edit& edit) { return edit.MapData.get(); }
  static void* MakeRoot(Edit& edit) {
    if (edit.MapData == nullptr) edit.MapData = std::make_unique<CQenMapDataEdit>();
    return edit.MapData.get();
  }
  static void Clear(Edit& edit) { edit.Release(); }
  static Info DefaultInfo() { return QenFileInfo::Default(); }
  template <class Content>
  static Result<void> Save(Content& content, const CString& path, const SaveOptions& options) {
    return SaveQen(content, path, options);
  }
  template <class Content>
  static Result<void> SaveXml(Content& content, const CString& path, const SaveOptions& options) {
    return SaveQenXml(content, path, options);
  }
};

struct ZorKind {
  using Chunks = CZor;
  using Edit = CZorEdit;
  using Info = ZorFileInfo;
  static constexpr BinaryKind kKind = BinaryKind::kZor;

  static const ClassInfo& InfoClass() { return ZorInfoClass(); }
  static const ClassInfo& RootClass(bool editable) { return ZorRootClass(editable); }
  static void* RootOf(Chunks& drawing) { return &drawing.DrawData; }
  static void* RootOf(Edit& edit) { return &edit.DrawData; }
  static void* MakeRoot(Edit& edit) { return &edit.DrawData; }
  static void Clear(Edit& edit) { edit.DrawData.Release(); }
  static Info DefaultInfo() { return DefaultZorFileInfo(); }
  template <class Content>
  static Result<void> Save(Content& content, const CString& path, const SaveOptions& options) {
    return SaveZor(content, path, options);
  }
  template <class Content>
  static Result<void> SaveXml(Content& content, const CString& path, const SaveOptions& options) {
    return SaveZorXml(content, path, options);
  }
};

inline Failure FailureOf(FailureKind kind, CString reason) {
  Failure failure;
  failure.Kind = kind;
  failure.Reason = std::move(reason);
  return failure;
}

inline Failure NoMemory() {
  return FailureOf(FailureKind::kOutOfMemory, "the memory does not suffice");
}

template <class Content>
Result<void> CheckStorable(const Content& content, StoredForm form) {
  std::optional<Unstorable> lost = FindUnstorable(content, form);
  if (!lost.has_value()) return {};
  Failure failure = FailureOf(FailureKind::kCannotStore, std::move(lost->Reason));
  failure.ChunkPath = std::move(lost->ChunkPath);
  return failure;
}

template <class Chunks>
Result<std::vector<std::uint8_t>> BytesOf(Chunks& document) {
  if (auto storable = CheckStorable(document, StoredForm::kBinary); !storable)
    return storable.GetFailure();
  CMemFile file;
  if (!document.Write(&file)) return NoMemory();
  return std::make_unique<std::vector<std::uint8_t>>(file.GetBytes());
}

template <class Kind>
class EditDocument;

template <class Kind>
class ChunkDocument final : public Store, public Document {
 public:
  using Chunks = typename Kind::Chunks;
  explicit ChunkDocument(std::unique_ptr<Chunks> document) : m_document(std::move(document)) {}
  ~ChunkDocument() override = default;

  bool IsEditable() const override { return false; }
  void* FindRoot() override { return Kind::RootOf(*m_document); }

  BinaryKind GetKind() const override { return Kind::kKind; }
  Store& GetStore() override { return *this; }
  const ClassInfo& GetRootClass() const override { return Kind::RootClass(false); }
  Object GetInfo() override {
    return {static_cast<typename Kind::Info*>(m_document.get()), &Kind::InfoClass()};
  }
  Result<void> Save(const CString& path, const SaveOptions& options) override {
    return Kind::Save(*m_document, path, options);
  }
  Result<void> SaveXml(const CString& path, const SaveOptions& options) override {
    return Kind::SaveXml(*m_document, path, options);
  }
  Result<std::vector<std::uint8_t>> ToBytes() override { return BytesOf(*m_document); }
  Result<Document> Clone() override {
    std::unique_ptr<Chunks> clone(m_document->Clone());
    if (clone == nullptr) return NoMemory();
    return std::unique_ptr<Document>(new ChunkDocument(std::move(clone)));
  }
  Result<Document> Convert() override;
  bool Equals(const Document& other) const override {
    const auto* const same = dynamic_cast<const ChunkDocument*>(&other);
    return same != nullptr && *m_document == *same->m_document;
  }
  const CQen* GetQen() const override { return AsKind<CQen>(); }
  const CZor* GetZor() const override { return AsKind<CZor>(); }

 private:
  template <class Wanted>
  const Wanted* AsKind() const {
    if constexpr (std::is_same_v<Wanted, Chunks>)
      return m_document.get();
    else
      return nullptr;
  }

  std::unique_ptr<Chunks> m_document;
};

template <class Kind>
class EditDocument final : public EditStore, public Document {
 public:
  using Chunks = typename Kind::Chunks;
  using Edit = typename Kind::Edit;
  explicit EditDocument(std::unique_ptr<Edit> edit) : m_edit(std::move(edit)) {}
  ~EditDocument() override = default;

  void* FindRoot() override { return Kind::RootOf(*m_edit); }
  void* NeedRoot() override { return Kind::MakeRoot(*m_edit); }

  BinaryKind GetKind() const override { return Kind::kKind; }
  Store& GetStore() override { return *this; }
  const ClassInfo& GetRootClass() const override { return Kind::RootClass(true); }
  Object GetInfo() override {
    return {static_cast<typename Kind::Info*>(m_edit.get()), &Kind::InfoClass()};
  }
  Result<void> Save(const CString& path, const SaveOptions& options) override {
    return Kind::Save(*m_edit, path, options);
  }
  Result<void> SaveXml(const CString& path, const SaveOptions& options) override {
    return Kind::SaveXml(*m_edit, path, options);
  }
  Result<std::vector<std::uint8_t>> ToBytes() override {
    const std::unique_ptr<Chunks> document = ToDocument(*m_edit);
    if (document == nullptr) return NoMemory();
    return BytesOf(*document);
  }
  Result<Document> Clone() override {
    const std::unique_ptr<Chunks> document = ToDocument(*m_edit);
    std::unique_ptr<Edit> clone = document == nullptr ? nullptr : ToEdit(*document);
    if (clone == nullptr) return NoMemory();
    return std::unique_ptr<Document>(new EditDocument(std::move(clone)));
  }
  Result<Document> Convert() override {
    if (auto storable = CheckStorable(*m_edit, StoredForm::kXml); !storable)
      return storable.GetFailure();
    std::unique_ptr<Chunks> document = ToDocument(*m_edit);
    if (document == nullptr) return NoMemory();
    return std::unique_ptr<Document>(new ChunkDocument<Kind>(std::move(document)));
  }
  bool Equals(const Document& other) const override {
    const auto* const same = dynamic_cast<const EditDocument*>(&other);
    return same != nullptr && *m_edit == *same->m_edit;
  }
  void Close() override {
    SetClosed();
    DropAll();
    Kind::Clear(*m_edit);
  }

 private:
  std::unique_ptr<Edit> m_edit;
};

template <class Kind>
Result<Document> ChunkDocument<Kind>::Convert() {
  auto edit = ToEdit(*m_document);
  if (edit == nullptr) return NoMemory();
  return std::unique_ptr<Document>(new EditDocument<Kind>(std::move(edit)));
}

}  // namespace qenzor::python
