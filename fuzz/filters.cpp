// Filters and frames as users write them, and files of z-ids: what is refused changes nothing.

#include "qenzor/view/filters.h"

#include <string>
#include <vector>

#include "qenzor/view/frame.h"
#include "support/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<char> bytes(data, data + size);
  const std::string_view text(bytes.data(), bytes.size());
  std::set<std::uint64_t> z_ids{7};
  if (qenzor::AddZIds(text, z_ids)) {
    std::string listed;
    for (const std::uint64_t z_id : z_ids) listed += std::to_string(z_id) + " # a z-id\r\n";
    std::set<std::uint64_t> again;
    fuzz::Require(qenzor::AddZIds(listed, again) && again == z_ids);
  } else {
    fuzz::Require(z_ids == std::set<std::uint64_t>{7});
  }
  for (const qenzor::FilterOption& option : qenzor::kFilterOptions) {
    if (text.starts_with('@')) break;  // names a file
    qenzor::Filters filters;
    const bool added = static_cast<bool>(filters.Add(option.Name, text));
    fuzz::Require(added != filters.PassAll());
  }
  static_cast<void>(qenzor::FrameOptions::Parse(text));
  return 0;
}
