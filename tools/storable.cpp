#include "storable.h"

#include <type_traits>
#include <vector>

#include "qenzor/catalogue.h"
#include "qenzor/core/fields.h"
#include "qenzor/core/stored_text.h"
#include "qenzor/platform/code_page.h"

namespace tool {

namespace {

// The class names nearly every one of the library's data classes.
using namespace qenzor;  // NOLINT(google-build-using-namespace)

constexpr std::size_t kMaxListLength = 65535;

/// Walks edit objects through their field lists until one does not fit its counts.
class CLimitWalk {
 public:
  template <class Edit>
  bool Walk(const std::string& name, const Edit& edit) {
    m_path.push_back(name);
    const bool fits = Fits(edit);
    if (fits) m_path.pop_back();
    return fits;
  }

  std::string GetFinding() const {
    if (m_finding.empty()) return {};
    std::string path;
    for (const std::string& name : m_path) path += (path.empty() ? "" : "/") + name;
    return path + ": " + m_finding;
  }

  template <class T, class Fields>
  bool FitFields(const T& object, const Fields& fields) {
    return AllFields(fields, [&](const auto& f) { return FitField(object, f); });
  }

 private:
  template <class Edit>
  bool Fits(const Edit& edit) {
    if constexpr (requires { edit.GetElems(); }) {
      std::size_t at = 0;
      for (const auto* elem : edit.GetElems())
        if (!Walk("DrawAtter[" + std::to_string(at++) + "]", *elem)) return false;
      return true;
    } else if constexpr (requires { edit.GetElemPtr(); }) {
      std::size_t at = 0;
      for (const auto& elem : *edit.GetElemPtr())
        if (!FitElem(elem.get(), at++)) return false;
      return true;
    } else {
      return FitFields(edit, FieldsOf<Edit>());
    }
  }

  /// An element of an array set, of whatever class.
  bool FitElem(const CAbstractChunkEdit* elem, std::size_t at) {
    bool fits = true;
    AnyClass([&]<class Row>(Row) {
      const auto* edit = dynamic_cast<const typename Row::Edit*>(elem);
      if (edit != nullptr)
        fits = Walk(std::string(Row::kTag) + "[" + std::to_string(at) + "]", *edit);
      return edit != nullptr;
    });
    return fits;
  }

  template <class T, class O, class V, class C>
  bool FitField(const T& /*object*/, const Field<O, V, C>& /*f*/) {
    return true;
  }

  template <class T, class O, class V>
  bool FitField(const T& object, const TextField<O, V>& f) {
    const V& text = object.*f.Member;
    // The longest text has as many units as its block holds behind the mark.
    const std::size_t most = std::min<std::size_t>(f.MaxBytes, 0xFFFE) / 2 - 1;
    std::size_t length = text.size();
    if constexpr (std::is_same_v<V, CString>)
      if (length > most) length = WidenText(text).size();
    return length <= most || TooLong(f.Tag, length, "characters", most);
  }

  template <class T, class O, class List>
  bool FitField(const T& object, const ArrayField<O, List>& f) {
    using Element = typename List::value_type;
    const List& list = object.*f.Member;
    if (std::is_same_v<Element, std::uint32_t>) return true;  // draw info indices come round
    if (list.size() > kMaxListLength) return TooLong(f.Tag, list.size(), "entries", kMaxListLength);
    if constexpr (requires { typename Element::element_type; }) {
      using Record = typename Element::element_type;
      for (std::size_t i = 0; i < list.size(); ++i) {
        m_path.push_back(std::string(f.Tag) + "[" + std::to_string(i) + "]");
        if (list[i] != nullptr && !FitFields(*list[i], Record::Fields())) return false;
        m_path.pop_back();
      }
    }
    return true;
  }

  template <class T, class Members>
  bool FitField(const T& object, const FieldGroup<Members>& f) {
    return FitFields(object, f.Members);
  }

  template <class T, class O, class Slot, class Chunk>
  bool FitField(const T& object, const SlotField<O, Slot, Chunk>& f) {
    const auto& sub = object.*f.Member;
    return sub == nullptr || Walk(std::string(f.Tag), *sub);
  }

  bool TooLong(std::string_view tag, std::size_t length, const char* unit, std::size_t most) {
    m_finding = std::string(tag) + " of " + std::to_string(length) + " " + unit +
                " is too long to be stored (at most " + std::to_string(most) + ")";
    return false;
  }

  std::vector<std::string> m_path;
  std::string m_finding;
};

}  // namespace

std::string FindUnstorable(const CQenEdit& edit) {
  CLimitWalk walk;
  if (edit.MapData != nullptr) walk.FitFields(*edit.MapData, FieldsOf<CQenMapDataEdit>());
  return walk.GetFinding();
}

std::string FindUnstorable(const CZorEdit& edit) {
  CLimitWalk walk;
  walk.FitFields(edit.DrawData, FieldsOf<CZorDrawDataEdit>());
  return walk.GetFinding();
}

}  // namespace tool
