// XML text of both documents: what loads converts, in bounds, and the document made of it takes a
// passage like those that were read.

#include <iterator>
#include <string_view>

#include "qenzor/text/xml_file.h"
#include "support/documents.h"
#include "support/memory_limit.h"
#include "support/text_file.h"
#include "support/xml_hooks.h"

namespace {

/// Mostly as files are read that say nothing else.
qenzor::XmlReadOptions OptionsOf(std::uint32_t choice) {
  using qenzor::XmlEncoding;
  constexpr XmlEncoding kEncodings[] = {XmlEncoding::kShiftJis, XmlEncoding::kUtf8,
                                        XmlEncoding::kShiftJis, XmlEncoding::kAuto};
  qenzor::XmlReadOptions options;
  options.Encoding = kEncodings[choice / 32 % std::size(kEncodings)];
  if (choice % 8 == 0)
    options.Warn = [](std::string_view warning) { fuzz::Require(!warning.empty()); };
  return options;
}

template <class Kind>
void ReadText(std::span<const std::uint8_t> input) {
  const std::uint32_t choice = fuzz::ChoiceOf(input);
  const auto load = [&](const auto& from) {
    const fuzz::MemoryLimit limit(fuzz::MemoryFor(input.size()));
    return Kind::LoadXml(from, OptionsOf(choice)).Take();
  };
  std::unique_ptr<typename Kind::Edit> edit;
  if (choice % 64 == 63) {  // by path, at times
    const qenzor::CString& path = fuzz::TextFile(input);
    if (qenzor::FindXmlError(path).has_value())
      fuzz::Require(std::unique_ptr<typename Kind::Edit>(Kind::FromText(path)) == nullptr);
    edit = load(path);
  } else {
    edit = load(std::string_view(reinterpret_cast<const char*>(input.data()), input.size()));
  }
  if (edit == nullptr) return;
  const std::unique_ptr<typename Kind::Document> document(Kind::ToDocument(*edit));
  fuzz::Require(document != nullptr);
  // A document without its root is not written; a brush name longer than its block is written but
  // does not read again.
  qenzor::CMemFile file;
  if (!document->Write(&file)) return;
  typename Kind::Document again;
  if (again.Read(file.GetBytes().data(), static_cast<std::uint32_t>(file.GetBytes().size())))
    fuzz::TakePassage<Kind>(*document, choice);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (text.find("<Zor") != std::string_view::npos)
    ReadText<fuzz::Zor>({data, size});
  else
    ReadText<fuzz::Qen>({data, size});
  return 0;
}
