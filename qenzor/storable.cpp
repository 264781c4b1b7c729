#include "qenzor/storable.h"

#include <algorithm>

#include "qenzor/storable_walk_impl.h"

namespace qenzor {

void CStorableWalk::WalkText(std::string_view tag, const CStringW& text, std::uint32_t max_bytes,
                             Sizes& sizes) {
  sizes.Front += kStoredTextCountSize + (text.empty() ? 0 : (std::uint64_t{text.size()} + 1) * 2);
  const std::size_t most = max_bytes / 2 - 1;
  if (m_binary && text.size() > most) return TooLong(tag, text.size(), "characters", most);
  if (text.find(u'\0') != CStringW::npos)
    Find(CString(tag) + " holds a NUL, at which a stored text ends");
}

bool CStorableWalk::FitGeometry(std::string_view tag, const CPoint& point) {
  return FitCoordinate(tag, point.x) && FitCoordinate(tag, point.y);
}

bool CStorableWalk::FitGeometry(std::string_view tag, const CRect& rect) {
  return FitCoordinate(tag, rect.left) && FitCoordinate(tag, rect.top) &&
         FitCoordinate(tag, rect.right) && FitCoordinate(tag, rect.bottom);
}

bool CStorableWalk::FitCoordinate(std::string_view tag, std::int32_t value) {
  using Stored = std::numeric_limits<std::int16_t>;
  if (!m_binary || (value >= Stored::min() && value <= Stored::max())) return true;
  Find(CString(tag) + " has the coordinate " + std::to_string(value) +
       ", outside what can be stored (" + std::to_string(Stored::min()) + " to " +
       std::to_string(Stored::max()) + ")");
  return false;
}

bool CStorableWalk::FitSize(std::uint64_t size) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  if (!m_binary || size <= kMost) return true;
  Find("takes " + std::to_string(size) + " bytes, too many to be stored (at most " +
       std::to_string(kMost) + ")");
  return false;
}

void CStorableWalk::TooLong(std::string_view tag, std::size_t length, const char* unit,
                            std::size_t most) {
  Find(CString(tag) + " of " + std::to_string(length) + " " + unit +
       " is too long to be stored (at most " + std::to_string(most) + ")");
}

void CStorableWalk::Find(CString reason) {
  CString path;
  for (const Step& step : m_path) {
    path += (path.empty() ? "" : "/") + CString(step.Tag);
    if (step.Position >= 0) path += '[' + std::to_string(step.Position) + ']';
  }
  m_found = Unstorable{std::move(path), std::move(reason)};
}

namespace {

template <class Document>
std::optional<Unstorable> FindInMap(const Document& document, StoredForm form) {
  if (document.MapData != nullptr)
    return CStorableWalk(form).WalkRoot<CQenMapData>(*document.MapData, PackedSize<QenFileInfo>());
  if (form == StoredForm::kXml) return std::nullopt;
  return Unstorable{{}, "there is no map data, without which a map cannot be stored"};
}

}  // namespace

std::optional<Unstorable> FindUnstorable(const CQen& document, StoredForm form) {
  return FindInMap(document, form);
}

std::optional<Unstorable> FindUnstorable(const CQenEdit& edit, StoredForm form) {
  return FindInMap(edit, form);
}

std::optional<Unstorable> FindUnstorable(const CZor& document, StoredForm form) {
  return CStorableWalk(form).WalkRoot<CZorDrawData>(document.DrawData, PackedSize<ZorFileInfo>());
}

std::optional<Unstorable> FindUnstorable(const CZorEdit& edit, StoredForm form) {
  return CStorableWalk(form).WalkRoot<CZorDrawData>(edit.DrawData, PackedSize<ZorFileInfo>());
}

}  // namespace qenzor
