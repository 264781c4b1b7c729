#include "tools/limits.h"

#include <algorithm>
#include <limits>
#include <type_traits>

#include "qenzor/core/stored_text.h"
#include "qenzor/platform/code_page.h"
#include "tools/edit_walk.h"
#include "tools/failure.h"

namespace tool {

namespace {

/// UTF-16 units that a text takes in the file.
std::size_t UnitsOf(const qenzor::CStringW& text) { return text.size(); }
std::size_t UnitsOf(const qenzor::CString& name) { return qenzor::WidenText(name).size(); }

template <class Element>
constexpr std::string_view NounOf() {
  if constexpr (std::is_same_v<Element, qenzor::CPoint>)
    return "points";
  else if constexpr (std::is_same_v<Element, qenzor::CMarkElem>)
    return "mark elements";
  else
    return "scale records";
}

/// Holds the fields of an object's edit form against what its chunk can take.
class FieldLimits {
 public:
  explicit FieldLimits(std::string path) : m_path(std::move(path)) {}

  const std::string& GetBreach() const { return m_breach; }

  template <class ChunkData, class EditData, class Edit>
  void Check(const Edit& edit) {
    CheckAll(ChunkData::Fields(), EditData::Fields(), edit);
  }

 private:
  template <class ChunkFields, class EditFields, class Edit>
  void CheckAll(const ChunkFields& chunk_fields, const EditFields& edit_fields, const Edit& edit) {
    qenzor::ForEachFieldPair(chunk_fields, edit_fields,
                             [&](const auto& c, const auto& e) { CheckField(c, e, edit); });
  }

  template <class Other, class Edit>
  void CheckField(const Other& /*c*/, const auto& /*e*/, const Edit& /*edit*/) {}

  template <class Fields, class Edit>
  void CheckField(const qenzor::FieldGroup<Fields>& c, const auto& e, const Edit& edit) {
    CheckAll(c.Members, e.Members, edit);
  }

  template <class O, class V, class Edit>
  void CheckField(const qenzor::TextField<O, V>& c, const auto& e, const Edit& edit) {
    constexpr std::size_t kMarkUnits = 1;
    const std::size_t most =
        std::min<std::size_t>(qenzor::kMaxStoredTextUnits, c.MaxBytes / 2 - kMarkUnits);
    const std::size_t units = UnitsOf(edit.*e.Member);
    if (units > most)
      Report((c.Tag == "Text" ? "text" : std::string(c.Tag)) + " of " + std::to_string(units) +
             " characters is too long (at most " + std::to_string(most) + ")");
  }

  template <class O, class Array, class Edit>
  void CheckField(const qenzor::ArrayField<O, Array>& c, const auto& e, const Edit& edit) {
    using Element = typename Array::value_type;
    const auto& list = edit.*e.Member;
    // A list as long as 32 bits tell does not come from a file, which is no longer itself.
    if constexpr (sizeof(typename Array::count_type) < sizeof(std::uint32_t))
      if (list.size() > Array::kMaxCount)
        Report(std::to_string(list.size()) + ' ' + std::string(NounOf<Element>()) +
               " are too many (at most " + std::to_string(Array::kMaxCount) + ")");
    if constexpr (!qenzor::IsFixedSize<Element>()) {
      std::size_t index = 0;
      for (const auto& record : list) {
        FieldLimits inner(m_path + '/' + std::string(c.Tag) + '[' + std::to_string(index++) + ']');
        inner.Check<Element, typename Element::EditClass>(*record);
        if (m_breach.empty()) m_breach = inner.m_breach;
      }
    }
  }

  void Report(const std::string& what) {
    if (m_breach.empty()) m_breach = m_path + ": " + what;
  }

  std::string m_path;
  std::string m_breach;
};

template <class Edit>
std::string FirstBreach(const Edit& document) {
  std::string breach;
  WalkEdit(document, [&breach]<class Chunk>(const auto& edit, const TreePath& path) {
    if (!breach.empty()) return;
    using EditClass = std::remove_cvref_t<decltype(edit)>;
    FieldLimits limits(path.GetText());
    limits.Check<typename Chunk::DataType, typename EditClass::DataType>(edit);
    breach = limits.GetBreach();
  });
  return breach;
}

template <class Edit>
void Require(const Edit& document, const std::string& name) {
  const std::string breach = FirstBreach(document);
  if (!breach.empty()) throw Failure(name, breach);
}

}  // namespace

std::string FindBreach(const qenzor::CQenEdit& edit) { return FirstBreach(edit); }
std::string FindBreach(const qenzor::CZorEdit& edit) { return FirstBreach(edit); }

void RequireStorable(const qenzor::CQenEdit& edit, const std::string& name) { Require(edit, name); }
void RequireStorable(const qenzor::CZorEdit& edit, const std::string& name) { Require(edit, name); }

}  // namespace tool
