#pragma once

// Carrying changes out, by the field lists.

#include <algorithm>
#include <charconv>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "qenzor/edit/convert.h"
#include "qenzor/work/apply.h"
#include "qenzor/work/failures_impl.h"
#include "qenzor/work/json_read_impl.h"

namespace qenzor::work {

/// What is thrown where a value of the change document makes no sense.
struct ContentError {
  Failure Why;
};

/// A field that has no coding of its own, as an element of a list.
struct NoEntry {};

/// Calls f(entry, value) for the value that the path leads to; false when it leads nowhere.
template <class T, class F>
bool WithField(T& object, std::string_view path, const F& f);

inline std::pair<std::string_view, std::string_view> SplitPath(std::string_view path) {
  const std::size_t slash = path.find('/');
  return {path.substr(0, slash),
          slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1)};
}

/// Steps into a value by the rest of a path.
template <class V, class F>
bool WithInside(V& value, std::string_view path, const F& f) {
  if constexpr (Slot<V>) {
    return value != nullptr && WithInside(*value, path, f);
  } else if constexpr (Array<V> || (Set<V> && !KeyedSet<V>)) {
    const auto [step, rest] = SplitPath(path);
    std::uint32_t at = 0;
    const char* const end = step.data() + step.size();
    const auto parsed = std::from_chars(step.data(), end, at);
    if (parsed.ec != std::errc() || parsed.ptr != end || at >= value.size()) return false;
    if constexpr (Array<V>) {
      if (!rest.empty()) return WithInside(value[at], rest, f);
      f(NoEntry{}, value[at]);
      return true;
    } else {
      bool found = false;
      const std::string_view inside = rest;
      Visit(*value.GetElem(at),
            [&]<HasFieldList Class>(Class& chunk) { found = WithField(chunk, inside, f); });
      return found;
    }
  } else if constexpr (HasFieldList<V> || HasFields<V>) {
    return WithField(value, path, f);
  } else {
    return false;
  }
}

template <class T, class F>
bool WithField(T& object, std::string_view path, const F& f) {
  const auto [step, rest] = SplitPath(path);
  bool found = false;
  const std::string_view tag = step;
  const std::string_view inside = rest;
  AllValues(ListOf<T>(), [&](const auto& entry) {
    if (entry.Tag != tag) return true;
    if (inside.empty()) {
      f(entry, object.*entry.Member);
      found = true;
    } else {
      found = WithInside(object.*entry.Member, inside, f);
    }
    return false;
  });
  return found;
}

class CApplier {
 public:
  explicit CApplier(const ChangeDocument& changes) : m_changes(changes) {}

  /// Root is the root chunk, or an owner of one.
  template <class Info, class Root>
  void ApplyToDocument(Info& info, Root& root) {
    Rows rows;
    for (std::uint32_t i = 0; i < m_changes.Changes.size(); ++i)
      if (!SetInDocument(info, root, i)) rows.push_back(i);
    if constexpr (!Slot<Root>)
      ApplyTo(root, rows, 0);
    else if (root != nullptr)
      ApplyTo(*root, rows, 0);
    else
      TellMisfits(rows, "the document has no content");
  }
  /// What came of it.
  std::unique_ptr<ApplyReport> Report() const;

 private:
  using Rows = std::vector<std::uint32_t>;  // of changes, by index

  struct Claim {
    std::uint64_t Target;
    std::uint32_t Change;
    std::uint32_t From;  ///< of a moved element
  };
  /// What is to become of a list.
  struct ListPlan {
    explicit ListPlan(std::size_t size) : IsGone(size) {}
    std::vector<bool> IsGone;
    std::vector<Claim> Claims;
    std::vector<std::uint32_t> AtEnd;  ///< changes that add there
  };

  const Change& At(std::uint32_t index) const { return m_changes.Changes[index]; }
  void TellMisfit(std::uint32_t index, CString reason);
  void TellMisfits(const Rows& rows, const CString& reason);
  /// Gives up the claims that no place of the list can satisfy, by the count of what stays.
  void SettleClaims(ListPlan& plan);
  [[noreturn]] void Fail(std::uint32_t index, std::string_view member, const CJsonReader& reader);
  Json Parsed(std::uint32_t index, std::string_view member, const CString& json) const;

  // Values.

  /// Reads a member of a change by read(reader, json).
  template <class Read>
  void ReadMember(std::uint32_t index, std::string_view member, const CString& text, Read&& read) {
    const Json json = Parsed(index, member, text);
    CJsonReader reader;
    if (!read(reader, json)) Fail(index, member, reader);
  }
  template <class Entry, class V>
  void SetValue(const Entry& entry, V& value, std::uint32_t index) {
    const Change& change = At(index);
    V now{};
    const auto read = [&](CJsonReader& reader, const Json& json) {
      return reader.ReadField(json, entry, now);
    };
    if (!change.Before.empty()) {
      ReadMember(index, "from", change.Before, read);
      if (!Same(now, value)) return TellMisfit(index, "another value stands there");
      now = V{};
    }
    ReadMember(index, "to", change.After, read);
    value = std::move(now);
    m_isApplied[index] = true;
  }
  /// Carries a set out on a field of an object; false where there is none.
  template <class T>
  bool SetIn(T& object, std::uint32_t index) {
    return WithField(object, At(index).Field,
                     [&](const auto& entry, auto& value) { SetValue(entry, value, index); });
  }
  /// The same for the document's own fields.
  template <class Info, class Root>
  bool SetInDocument(Info& info, Root& root, std::uint32_t index) {
    if (!At(index).Place.empty() || At(index).Kind != ChangeKind::kSet) return false;
    if constexpr (Slot<Root>) {
      if (At(index).Field == Root::element_type::kTag) {
        SetValue(NoEntry{}, root, index);
        return true;
      }
    }
    return SetIn(info, index);
  }
  /// Whether an element that is to go is the one that the change tells of.
  template <Set Chunk>
  bool IsAsTold(const typename Chunk::Element& elem, std::uint32_t index) {
    if (At(index).Before.empty()) return true;
    std::unique_ptr<typename Chunk::Element> told;
    ReadMember(index, "value", At(index).Before, [&](CJsonReader& reader, const Json& json) {
      return reader.ReadElement<Chunk>(json, told);
    });
    if (Same(*told, elem)) return true;
    TellMisfit(index, "another element stands there");
    return false;
  }
  template <Set Chunk>
  std::unique_ptr<typename Chunk::Element> MakeElement(std::uint32_t index) {
    std::unique_ptr<typename Chunk::Element> made;
    ReadMember(index, "value", At(index).After, [&](CJsonReader& reader, const Json& json) {
      return reader.ReadElement<Chunk>(json, made);
    });
    if constexpr (Numbered<typename Chunk::Element>)
      if (NumberOf(*made) != At(index).Place.back().Number)
        throw ContentError{ContentFailure("/changes/" + std::to_string(index) + "/value",
                                          "has another number than its place")};
    return made;
  }

  // Objects whose sets have places.

  template <class Owner>
  void ApplyTo(Owner& owner, const Rows& rows, std::size_t depth) {
    AllValues(FieldsOf<Owner>(), [&]<class Entry>(const Entry& f) {
      if constexpr (requires { typename Entry::Chunk::Element; }) {
        Rows below;
        for (const std::uint32_t i : rows)
          if (At(i).Place.size() > depth &&
              At(i).Place[depth].Key == KeyOfElements<typename Entry::Chunk>())
            below.push_back(i);
        if (below.empty()) return true;
        auto& set = owner.*f.Member;
        if (set == nullptr)
          TellMisfits(below, "there is no " + CString(f.Tag));
        else
          ApplyToSet(*set, below, depth);
      }
      return true;
    });
    for (const std::uint32_t i : rows)
      if (At(i).Place.size() == depth) SetOwned(owner, i);
  }
  template <class Owner>
  void SetOwned(Owner& owner, std::uint32_t index) {
    if constexpr (Numbered<Owner>)
      if (At(index).Field == NumberField<Owner>().Tag)
        return TellMisfit(index, "the number tells which one it is: delete it and add another");
    if (At(index).Kind != ChangeKind::kSet || !SetIn(owner, index))
      TellMisfit(index, "there is no such field");
  }

  template <Set Chunk>
  void ApplyToSet(Chunk& set, const Rows& rows, std::size_t depth) {
    if constexpr (KeyedSet<Chunk>)
      ApplyToKeyed(set, rows, depth);
    else if constexpr (Numbered<typename Chunk::Element>)
      ApplyToNumbered(set, rows, depth);
    else
      ApplyToList(set, rows, depth);
  }

  /// Whether the change is about the element of the set itself, not about what is in it.
  bool IsStructure(std::uint32_t index, std::size_t depth) const {
    return At(index).Place.size() == depth + 1 && At(index).Kind != ChangeKind::kSet;
  }

  /// Hands what goes on inside of elements to them, by find(step); the rest is given back.
  template <Set Chunk, class Find>
  Rows ApplyInside(Chunk& set, const Rows& rows, std::size_t depth, Find&& find) {
    Rows structure;
    Rows inside;
    for (const std::uint32_t i : rows) (IsStructure(i, depth) ? structure : inside).push_back(i);
    const auto key = [&](std::uint32_t i) {
      return std::pair{At(i).Place[depth].Number, At(i).Place[depth].Nth};
    };
    std::stable_sort(inside.begin(), inside.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return key(a) < key(b); });
    for (std::size_t begin = 0, end = 0; begin < inside.size(); begin = end) {
      while (end < inside.size() && key(inside[end]) == key(inside[begin])) ++end;
      const Rows group(inside.begin() + static_cast<std::ptrdiff_t>(begin),
                       inside.begin() + static_cast<std::ptrdiff_t>(end));
      const PlaceStep& step = At(group.front()).Place[depth];
      if (step.Nth == PlaceStep::kAll)
        for (auto* elem : set) ApplyTo(*elem, group, depth + 1);
      else if (auto* elem = find(step); elem != nullptr)
        ApplyTo(*elem, group, depth + 1);
      else
        TellMisfits(group, "there is no such element");
    }
    return structure;
  }

  template <KeyedSet Chunk>
  void ApplyToKeyed(Chunk& set, const Rows& rows, std::size_t depth) {
    const auto find = [&](const PlaceStep& step) {
      return step.Nth == 0 ? set.GetElem(step.Number) : nullptr;
    };
    Rows added;
    std::vector<std::uint64_t> gone;
    for (const std::uint32_t i : ApplyInside(set, rows, depth, find)) {
      const auto* elem = find(At(i).Place.back());
      if (At(i).Kind == ChangeKind::kAdd) {
        added.push_back(i);
      } else if (At(i).Kind == ChangeKind::kMove) {
        TellMisfit(i, "these elements have no order");
      } else if (elem == nullptr) {
        TellMisfit(i, "there is no such element");
      } else if (IsAsTold<Chunk>(*elem, i)) {
        gone.push_back(elem->GetKey());
        m_isApplied[i] = true;
      }
    }
    std::sort(gone.begin(), gone.end());
    if (!gone.empty()) EraseKeys(set, gone);
    for (const std::uint32_t i : added) {
      auto elem = MakeElement<Chunk>(i);
      if (set.GetElem(elem->GetKey()) != nullptr) {
        TellMisfit(i, "there is such an element already");
        continue;
      }
      set.SubChunkSet(0, elem.release());
      m_isApplied[i] = true;
    }
  }
  template <KeyedSet Chunk>
  static void EraseKeys(Chunk& set, const std::vector<std::uint64_t>& gone) {
    std::vector<std::unique_ptr<typename Chunk::Element>> kept;
    for (auto* elem : set.GetElems())
      if (!std::binary_search(gone.begin(), gone.end(), elem->GetKey()))
        kept.push_back(TakeContent(*elem));
    Chunk empty;
    set.DeepCopy(&empty);
    // The latest of a bucket stands first in it.
    for (; !kept.empty(); kept.pop_back()) set.SubChunkSet(0, kept.back().release());
  }

  template <Set Chunk>
  void ApplyToNumbered(Chunk& set, const Rows& rows, std::size_t depth) {
    std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> places;
    for (std::uint32_t at = 0; at < set.GetElemCount(); ++at)
      places[NumberOf(*set.GetElem(at))].push_back(at);
    const auto find_at = [&](const PlaceStep& step) {
      const auto found = places.find(step.Number);
      return found == places.end() || step.Nth >= found->second.size()
                 ? std::uint64_t{PlaceStep::kEnd}
                 : found->second[step.Nth];
    };
    const Rows structure = ApplyInside(set, rows, depth, [&](const PlaceStep& step) {
      const std::uint64_t at = find_at(step);
      return at == PlaceStep::kEnd ? nullptr : set.GetElem(static_cast<std::uint32_t>(at));
    });
    if (structure.empty()) return;
    ListPlan plan(set.GetElemCount());
    std::unordered_map<std::uint64_t, std::int64_t> more;  // by number
    for (const std::uint32_t i : structure)
      if (At(i).Kind != ChangeKind::kAdd && TakeAway(set, i, find_at(At(i).Place.back()), plan) &&
          At(i).Kind == ChangeKind::kDelete)
        --more[At(i).Place.back().Number];
    for (const std::uint32_t i : structure) {
      if (At(i).Kind != ChangeKind::kAdd) continue;
      const PlaceStep& step = At(i).Place.back();
      const auto there = static_cast<std::int64_t>(places[step.Number].size()) + more[step.Number];
      if (there != step.Nth) {
        TellMisfit(i, there > step.Nth ? "there is such an element already"
                                       : "there are fewer elements of that number");
        continue;
      }
      ++more[step.Number];
      if (At(i).Position.has_value())
        plan.Claims.push_back({*At(i).Position, i, 0});
      else
        plan.AtEnd.push_back(i);
    }
    Rebuild(set, plan);
  }

  template <Set Chunk>
  void ApplyToList(Chunk& set, const Rows& rows, std::size_t depth) {
    ListPlan plan(set.GetElemCount());
    for (const std::uint32_t i : rows) {
      const std::uint64_t at = At(i).Place[depth].Number;
      if (At(i).Kind != ChangeKind::kSet) continue;
      if (at >= set.GetElemCount()) {
        TellMisfit(i, "there is no such element");
        continue;
      }
      bool found = false;
      Visit(*set.GetElem(static_cast<std::uint32_t>(at)),
            [&]<HasFieldList Class>(Class& chunk) { found = SetIn(chunk, i); });
      if (!found) TellMisfit(i, "there is no such field");
    }
    bool is_changed = false;
    for (const std::uint32_t i : rows) {
      if (At(i).Kind == ChangeKind::kSet) continue;
      is_changed = true;
      const std::uint64_t at = At(i).Place[depth].Number;
      if (At(i).Kind != ChangeKind::kAdd)
        TakeAway(set, i, at, plan);
      else if (at == PlaceStep::kEnd)
        plan.AtEnd.push_back(i);
      else
        plan.Claims.push_back({at, i, 0});
    }
    if (is_changed) Rebuild(set, plan);
  }

  /// Plans that an element goes from its place, for good or to another.
  template <Set Chunk>
  bool TakeAway(Chunk& set, std::uint32_t index, std::uint64_t at, ListPlan& plan) {
    if (at >= set.GetElemCount() || plan.IsGone[at]) {
      TellMisfit(index, "there is no such element");
      return false;
    }
    const auto from = static_cast<std::uint32_t>(at);
    if (At(index).Kind == ChangeKind::kMove)
      plan.Claims.push_back({At(index).To.value_or(0), index, from});
    else if (!IsAsTold<Chunk>(*set.GetElem(from), index))
      return false;
    else
      m_isApplied[index] = true;
    plan.IsGone[at] = true;
    return true;
  }

  /// The elements as planned, those that stay in their order around the others.
  template <Set Chunk>
  void Rebuild(Chunk& set, ListPlan& plan) {
    SettleClaims(plan);
    std::vector<std::unique_ptr<typename Chunk::Element>> elems;
    auto claim = plan.Claims.begin();
    const auto take_claimed = [&] {
      for (; claim != plan.Claims.end() && claim->Target == elems.size(); ++claim) {
        m_isApplied[claim->Change] = true;
        elems.push_back(At(claim->Change).Kind == ChangeKind::kMove
                            ? TakeContent(*set.GetElem(claim->From))
                            : MakeElement<Chunk>(claim->Change));
      }
    };
    for (std::uint32_t at = 0; at < set.GetElemCount(); ++at) {
      if (plan.IsGone[at]) continue;
      take_claimed();
      elems.push_back(TakeContent(*set.GetElem(at)));
    }
    for (const std::uint32_t i : plan.AtEnd) {
      take_claimed();
      elems.push_back(MakeElement<Chunk>(i));
      m_isApplied[i] = true;
    }
    take_claimed();
    set.GetNewArray(static_cast<std::uint32_t>(elems.size()));
    for (std::uint32_t at = 0; at < elems.size(); ++at) set.SetElem(at, elems[at].release());
  }

  /// The element as an object that belongs to nobody: what a container holds goes with it.
  template <class Element>
  static std::unique_ptr<Element> TakeContent(Element& elem) {
    if constexpr (HasFieldList<Element>) {
      auto taken = std::make_unique<Element>();
      AllValues(FieldsOf<Element>(), [&](const auto& f) {
        (*taken).*f.Member = std::move(elem.*f.Member);
        return true;
      });
      return taken;
    } else {
      auto taken = CloneOf(elem);
      if (taken == nullptr) throw std::bad_alloc();
      return taken;
    }
  }

  const ChangeDocument& m_changes;
  std::vector<bool> m_isApplied = std::vector<bool>(m_changes.Changes.size());
  std::vector<bool> m_isMisfit = m_isApplied;
  std::vector<Misfit> m_misfits;
};

}  // namespace qenzor::work
