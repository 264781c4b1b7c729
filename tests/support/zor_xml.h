#pragma once

#include <memory>
#include <string>

#include "qenzor/zor/zor.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {

/// The document edit that XML text gives, or null.
inline std::unique_ptr<CZorEdit> ZorEditFromXml(const std::string& xml) {
  const TempFile file{std::string_view(xml)};
  return std::unique_ptr<CZorEdit>(CZorTextConverter().ConvertTextToZorEdit(file.Path()));
}

/// A document edit whose draw data element has the content given.
inline std::unique_ptr<CZorEdit> ZorEditFromDrawDataXml(const std::string& content) {
  return ZorEditFromXml("<Zor><ZorDrawData>" + content + "</ZorDrawData></Zor>");
}

/// A draw info edit of its own, as the element of a draw info set reads; null when it is none of
/// that class.
template <class Edit>
std::unique_ptr<Edit> DrawInfoFromXml(const std::string& element) {
  const auto doc = ZorEditFromDrawDataXml("<DrawInfoSet>" + element + "</DrawInfoSet>");
  CAbstractDrawInfoEdit* found = doc->DrawData.DrawInfoSet->GetElem(0);
  if (dynamic_cast<Edit*>(found) == nullptr) return nullptr;
  return std::unique_ptr<Edit>(static_cast<Edit*>(found->Clone()));
}

/// The same for the content of an element of the class's own tag.
template <class Chunk>
std::unique_ptr<typename Chunk::EditClass> DrawInfoFrom(const std::string& content) {
  const std::string tag(Chunk::kTag);
  return DrawInfoFromXml<typename Chunk::EditClass>("<" + tag + ">" + content + "</" + tag + ">");
}

/// A document read from these bytes in memory; null when the read fails.
inline std::unique_ptr<CZor> ZorFromMemory(const Bytes& bytes) {
  auto doc = std::make_unique<CZor>();
  return doc->Read(bytes.data(), bytes.size()) ? std::move(doc) : nullptr;
}

/// The same from a file of these bytes.
inline std::unique_ptr<CZor> ZorFromFile(const Bytes& bytes) {
  CMemFile file(bytes.vector());
  auto doc = std::make_unique<CZor>();
  return doc->Read(&file) ? std::move(doc) : nullptr;
}

/// What the document writes.
inline Bytes WrittenZor(CZor& doc) {
  CMemFile file;
  return doc.Write(&file) ? Bytes(file.GetBytes()) : Bytes("not written");
}

inline std::unique_ptr<CZor> ToZor(CZorEdit& edit) {
  return std::unique_ptr<CZor>(edit.EditDataToZorData());
}

}  // namespace qenzor::testing
