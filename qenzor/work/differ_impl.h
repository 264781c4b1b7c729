#pragma once

// The comparison of two documents, by the field lists.

#include <algorithm>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "qenzor/work/diff.h"
#include "qenzor/work/json_text_impl.h"
#include "qenzor/work/match_impl.h"

namespace qenzor::work {

using PassingObjects = std::unordered_set<const CAbstractObj*>;

/// The elements of a numbered set: their numbers, and which of its number each is.
class CNumberedRow {
 public:
  template <Set Chunk>
  explicit CNumberedRow(const Chunk& set) {
    m_numbers.reserve(set.size());
    for (const auto* elem : set) m_numbers.push_back(NumberOf(*elem));
  }

  const std::vector<std::uint64_t>& GetNumbers() const noexcept { return m_numbers; }
  std::uint32_t NthOf(std::size_t at) {
    if (m_nths.empty()) {
      std::unordered_map<std::uint64_t, std::uint32_t> seen;
      m_nths.reserve(m_numbers.size());
      for (const std::uint64_t number : m_numbers) m_nths.push_back(seen[number]++);
    }
    return m_nths[at];
  }

 private:
  std::vector<std::uint64_t> m_numbers;
  std::vector<std::uint32_t> m_nths;  // when first asked for
};

/// Gives equal objects the same id.
template <class Element>
class CContentIds {
 public:
  std::uint32_t IdOf(const Element& elem) {
    CHasher hasher;
    hasher.Add(elem);
    const auto [begin, end] = m_ids.equal_range(hasher.Get());
    for (auto at = begin; at != end; ++at)
      if (Same(*at->second.first, elem)) return at->second.second;
    const auto id = static_cast<std::uint32_t>(m_ids.size());
    m_ids.emplace(hasher.Get(), std::pair{&elem, id});
    return id;
  }

 private:
  std::unordered_multimap<std::uint64_t, std::pair<const Element*, std::uint32_t>> m_ids;
};

/// What became of the elements of a list: where kept and moved ones stand afterwards.
struct ListMatch {
  static constexpr std::uint32_t kNowhere = 0xFFFFFFFF;
  Matches Kept;
  std::vector<std::uint32_t> MovedTo;  ///< by the position before
  std::vector<bool> IsTaken;           ///< by the position afterwards: by a moved one
};
ListMatch MatchContents(const std::vector<std::uint32_t>& before,
                        const std::vector<std::uint32_t>& after, std::uint32_t front);

class CDiffer {
 public:
  /// Without passing objects all pass.
  CDiffer(const ChangeSink& sink, const PassingObjects* passing)
      : m_sink(sink), m_passing(passing) {}

  template <class Info>
  void DiffInfo(const Info& before, const Info& after) {
    if (m_passing == nullptr) DiffMembers(before, after);
  }
  template <class Root>
  void DiffRoot(const std::unique_ptr<Root>& before, const std::unique_ptr<Root>& after) {
    if (before != nullptr && after != nullptr)
      DiffOwner(*before, *after);
    else if (before != after && (Passes(before) || Passes(after)))
      TellSet(Root::kTag, JsonOf(before), JsonOf(after));
  }
  /// The root or a numbered element: what stands below it has a place of its own.
  template <HasFieldList T>
  void DiffOwner(const T& before, const T& after) {
    AllValues(FieldsOf<T>(), [&](const auto& f) {
      DiffOwned(f, before.*f.Member, after.*f.Member);
      return !m_stopped;
    });
  }

 private:
  struct OpenStep {
    std::string_view Key;
    std::uint64_t Number;
    CNumberedRow* Row;
    std::size_t At;
  };

  // Telling.

  template <class V>
  static CString JsonOf(const V& value) {
    CString json;
    AppendJson(json, value);
    return json;
  }
  Change NewChange(ChangeKind kind) const;
  void Tell(const Change& change) { m_stopped = m_stopped || !m_sink(change); }
  void TellSet(std::string_view tag, CString before, CString after);
  void TellElement(ChangeKind kind, PlaceStep step, std::optional<std::uint32_t> position,
                   CString json);
  void TellMove(PlaceStep step, std::optional<std::uint32_t> position, std::uint32_t to);

  /// Whether an object passes, or any below a container.
  template <class V>
  bool Passes(const V& value) const {
    if (m_passing == nullptr) return true;
    if constexpr (Slot<V>) {
      return value != nullptr && Passes(*value);
    } else if constexpr (std::is_base_of_v<CAbstractObj, V>) {
      return m_passing->contains(&value);
    } else if constexpr (Set<V>) {
      for (const auto* elem : value)
        if (Passes(*elem)) return true;
      return false;
    } else if constexpr (HasFieldList<V>) {
      return !AllValues(FieldsOf<V>(), [&](const auto& f) { return !Passes(value.*f.Member); });
    } else {
      return false;
    }
  }

  // Values, which are told by the path of their fields.

  template <class T>
  void DiffMembers(const T& before, const T& after) {
    AllValues(ListOf<T>(), [&](const auto& f) {
      DiffField(f, before.*f.Member, after.*f.Member);
      return !m_stopped;
    });
  }
  template <class Entry, class V>
  void DiffField(const Entry& f, const V& before, const V& after) {
    if (Same(before, after)) return;
    Below(f.Tag, [&] {
      if (DiffInside(before, after)) return;
      if constexpr (requires { typename Entry::Coding; }) {
        CString was;
        CString is;
        AppendJsonAs<typename Entry::Coding>(was, before);
        AppendJsonAs<typename Entry::Coding>(is, after);
        TellSet({}, std::move(was), std::move(is));
      } else {
        TellSet({}, JsonOf(before), JsonOf(after));
      }
    });
  }
  /// Whether the values are of the same make, so that what is in them has been compared.
  template <class V>
  bool DiffInside(const V& before, const V& after) {
    if constexpr (Slot<V>) {
      return before != nullptr && after != nullptr && DiffInside(*before, *after);
    } else if constexpr (Array<V>) {
      if constexpr (HasFields<typename V::value_type>) {
        if (before.size() != after.size()) return false;
        for (std::size_t i = 0; i < before.size(); ++i)
          Below(std::to_string(i), [&] { DiffMembers(before[i], after[i]); });
        return true;
      }
      return false;
    } else if constexpr (Set<V> && !KeyedSet<V>) {
      const auto same_class = [](const auto* a, const auto* b) {
        return &a->GetRuntimeClass() == &b->GetRuntimeClass();
      };
      if (!std::equal(before.begin(), before.end(), after.begin(), after.end(), same_class))
        return false;
      for (std::uint32_t i = 0; i < before.GetElemCount(); ++i)
        Below(std::to_string(i), [&] { DiffObjects(*before.GetElem(i), *after.GetElem(i)); });
      return true;
    } else if constexpr (HasFieldList<V>) {
      DiffMembers(before, after);
      return true;
    } else {
      return false;
    }
  }
  /// Two objects of one class.
  template <class Base>
  void DiffObjects(const Base& before, const Base& after) {
    Visit(before, [&]<HasFieldList Class>(const Class& chunk) {
      DiffMembers(chunk, static_cast<const Class&>(after));
    });
  }
  template <class Walk>
  void Below(std::string_view step, Walk&& walk) {
    const std::size_t length = m_path.size();
    if (length > 0) m_path += '/';
    m_path += step;
    walk();
    m_path.resize(length);
  }

  // Sets.

  template <class Entry, class V>
  void DiffOwned(const Entry& f, const V& before, const V& after) {
    if constexpr (Slot<V>) {
      using Chunk = typename V::element_type;
      if constexpr (Set<Chunk>) {
        if (before == nullptr || after == nullptr) {
          if (before != after && (Passes(before) || Passes(after)))
            TellSet(f.Tag, JsonOf(before), JsonOf(after));
        } else if constexpr (KeyedSet<Chunk>) {
          DiffKeyed(*before, *after);
        } else if constexpr (Numbered<typename Chunk::Element>) {
          DiffNumbered(*before, *after);
        } else {
          DiffList(*before, *after);
        }
        return;
      }
    }
    if (m_passing == nullptr) DiffField(f, before, after);
  }

  template <KeyedSet Chunk>
  void DiffKeyed(const Chunk& before, const Chunk& after) {
    constexpr std::string_view kKey = KeyOfElements<Chunk>();
    for (const auto* elem : before) {
      if (m_stopped) return;
      const PlaceStep step{kKey, elem->GetKey(), 0};
      const auto* now = after.GetElem(elem->GetKey());
      if (now == nullptr) {
        TellElement(ChangeKind::kDelete, step, {}, ElementJson<Chunk>(*elem));
      } else {
        m_place.push_back({kKey, step.Number, nullptr, 0});
        DiffOwner(*elem, *now);
        m_place.pop_back();
      }
    }
    for (const auto* elem : after)
      if (!m_stopped && before.GetElem(elem->GetKey()) == nullptr)
        TellElement(ChangeKind::kAdd, {kKey, elem->GetKey(), 0}, {}, ElementJson<Chunk>(*elem));
  }

  template <Set Chunk>
  void DiffNumbered(const Chunk& before, const Chunk& after) {
    CNumberedRow old_row(before);
    const auto descend = [&](std::uint32_t i, std::uint32_t j) {
      m_place.push_back({KeyOfElements<Chunk>(), old_row.GetNumbers()[i], &old_row, i});
      DiffOwner(*before.GetElem(i), *after.GetElem(j));
      m_place.pop_back();
    };
    CNumberedRow new_row(after);
    if (old_row.GetNumbers() == new_row.GetNumbers()) {
      for (std::uint32_t i = 0; i < before.GetElemCount() && !m_stopped; ++i) descend(i, i);
      return;
    }
    const NumberedMatch match = MatchNumbers(old_row, new_row);
    const auto step_of = [&](CNumberedRow& row, std::uint32_t at) {
      return PlaceStep{KeyOfElements<Chunk>(), row.GetNumbers()[at], row.NthOf(at)};
    };
    for (std::uint32_t i = 0; i < before.GetElemCount() && !m_stopped; ++i) {
      const std::uint32_t j = match.After[i];
      if (j != ListMatch::kNowhere) {
        if (match.IsMoved[i] && m_passing == nullptr) TellMove(step_of(old_row, i), i, j);
        descend(i, j);
      } else if (Passes(*before.GetElem(i))) {
        TellElement(ChangeKind::kDelete, step_of(old_row, i), i,
                    ElementJson<Chunk>(*before.GetElem(i)));
      }
    }
    for (std::uint32_t j = 0; j < after.GetElemCount() && !m_stopped; ++j)
      if (!match.IsFound[j] && Passes(*after.GetElem(j)))
        TellElement(ChangeKind::kAdd, step_of(new_row, j), j,
                    ElementJson<Chunk>(*after.GetElem(j)));
  }

  template <Set Chunk>
  void DiffList(const Chunk& before, const Chunk& after) {
    const std::uint32_t n = before.GetElemCount();
    const std::uint32_t m = after.GetElemCount();
    const auto same = [&](std::uint32_t i, std::uint32_t j) {
      return Same(*before.GetElem(i), *after.GetElem(j));
    };
    std::uint32_t front = 0;
    while (front < std::min(n, m) && same(front, front)) ++front;
    std::uint32_t back = 0;
    while (back < std::min(n, m) - front && same(n - 1 - back, m - 1 - back)) ++back;
    if (front + back == std::max(n, m)) return;
    CContentIds<typename Chunk::Element> ids;
    const auto ids_of = [&](const Chunk& set, std::uint32_t end) {
      std::vector<std::uint32_t> row;
      for (std::uint32_t i = front; i < end; ++i) row.push_back(ids.IdOf(*set.GetElem(i)));
      return row;
    };
    const auto old_ids = ids_of(before, n - back);
    ListMatch match = MatchContents(old_ids, ids_of(after, m - back), front);
    match.Kept.emplace_back(n - back, m - back);
    std::uint32_t i = front;
    std::uint32_t j = front;
    for (const auto& [kept_i, kept_j] : match.Kept) {
      DiffGap(before, after, match, {i, kept_i, j, kept_j, front});
      i = kept_i + 1;
      j = kept_j + 1;
    }
  }

  struct Gap {
    std::uint32_t Begin;
    std::uint32_t End;
    std::uint32_t NewBegin;
    std::uint32_t NewEnd;
    std::uint32_t Front;  ///< elements in front of all that were matched
  };

  /// What stands between two kept elements: each is held against the next of its class.
  template <Set Chunk>
  void DiffGap(const Chunk& before, const Chunk& after, const ListMatch& match, const Gap& gap) {
    constexpr std::string_view kKey = KeyOfElements<Chunk>();
    std::uint32_t j = gap.NewBegin;
    std::unordered_map<const CRuntimeClass*, std::uint32_t> nexts;  // none lies before, by class
    const auto add_until = [&](std::uint32_t end) {
      for (; j < end && !m_stopped; ++j)
        if (!match.IsTaken[j - gap.Front] && Passes(*after.GetElem(j)))
          TellElement(ChangeKind::kAdd, {kKey, j, 0}, {}, ElementJson<Chunk>(*after.GetElem(j)));
    };
    for (std::uint32_t i = gap.Begin; i < gap.End && !m_stopped; ++i) {
      const auto& elem = *before.GetElem(i);
      if (const std::uint32_t to = match.MovedTo[i - gap.Front]; to != ListMatch::kNowhere) {
        if (Passes(elem) || Passes(*after.GetElem(to))) TellMove({kKey, i, 0}, {}, to);
        continue;
      }
      std::uint32_t& next = nexts[&elem.GetRuntimeClass()];
      next = std::max(next, j);
      while (next < gap.NewEnd &&
             (match.IsTaken[next - gap.Front] ||
              &after.GetElem(next)->GetRuntimeClass() != &elem.GetRuntimeClass()))
        ++next;
      if (next == gap.NewEnd) {
        if (Passes(elem))
          TellElement(ChangeKind::kDelete, {kKey, i, 0}, {}, ElementJson<Chunk>(elem));
        continue;
      }
      add_until(next);
      m_place.push_back({kKey, i, nullptr, 0});
      if (Passes(elem) || Passes(*after.GetElem(next))) DiffObjects(elem, *after.GetElem(next));
      m_place.pop_back();
      ++j;
    }
    add_until(gap.NewEnd);
  }

  template <Set Chunk>
  static CString ElementJson(const typename Chunk::Element& elem) {
    CString json;
    AppendJsonElement<Chunk>(json, elem);
    return json;
  }

  /// Where the elements of a numbered set stand afterwards.
  struct NumberedMatch {
    std::vector<std::uint32_t> After;  ///< by the position before
    std::vector<bool> IsMoved;
    std::vector<bool> IsFound;  ///< by the position afterwards
  };
  static NumberedMatch MatchNumbers(CNumberedRow& before, CNumberedRow& after);

  const ChangeSink& m_sink;
  const PassingObjects* m_passing;
  std::vector<OpenStep> m_place;
  CString m_path;
  bool m_stopped = false;
};

}  // namespace qenzor::work
