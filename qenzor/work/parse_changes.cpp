#include <charconv>
#include <iterator>
#include <new>

#include "qenzor/work/change_document.h"
#include "qenzor/work/failures_impl.h"
#include "qenzor/work/json_read_impl.h"

namespace qenzor {

namespace {

using work::ContentFailure;
using work::Json;

/// Walks a text and lets another see how far it has come.
class CWatchedText {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  CWatchedText(const char* at, const char** seen) : m_at(at), m_seen(seen) {}
  reference operator*() const { return *m_at; }
  CWatchedText& operator++() {
    *m_seen = ++m_at;
    return *this;
  }
  CWatchedText operator++(int) {
    const CWatchedText before = *this;
    ++*this;
    return before;
  }
  bool operator==(const CWatchedText& other) const { return m_at == other.m_at; }
  bool operator!=(const CWatchedText& other) const { return m_at != other.m_at; }

 private:
  const char* m_at;
  const char** m_seen;
};

/// Why the text is no JSON, and at which character, counted from 1.
Failure SyntaxFailure(std::string_view text, std::size_t character, CString reason) {
  Failure failure;
  failure.Kind = FailureKind::kDamaged;
  const std::string_view before = text.substr(0, character == 0 ? 0 : character - 1);
  failure.Line = static_cast<std::uint32_t>(1 + std::count(before.begin(), before.end(), '\n'));
  failure.Column = static_cast<std::uint32_t>(before.size() - (before.rfind('\n') + 1) + 1);
  failure.Reason = std::move(reason);
  return failure;
}

/// The parser's sentence without its own place.
CString ReasonOf(const std::exception& error) {
  const std::string_view what = error.what();
  const std::size_t column = what.find("column ");
  const std::size_t after = what.find(": ", column == std::string_view::npos ? 0 : column);
  const std::size_t begin = after == std::string_view::npos ? what.find("] ") : after;
  return CString(begin == std::string_view::npos ? what : what.substr(begin + 2));
}

/// Goes over a text before anything is made of it.
class CSyntaxCheck final : public nlohmann::json_sax<Json> {
 public:
  explicit CSyntaxCheck(std::string_view text) : m_text(text) {}

  std::optional<Failure> Find() {
    const char* const end = m_text.data() + m_text.size();
    const bool sound =
        Json::sax_parse(CWatchedText(m_text.data(), &m_seen), CWatchedText(end, &m_seen), this);
    return sound ? std::nullopt : std::optional(m_failure);
  }

  bool null() override { return true; }
  bool boolean(bool /*value*/) override { return true; }
  bool number_integer(std::int64_t /*value*/) override { return true; }
  bool number_unsigned(std::uint64_t /*value*/) override { return true; }
  bool number_float(float /*value*/, const std::string& /*text*/) override { return true; }
  bool string(std::string& /*value*/) override { return true; }
  bool binary(Json::binary_t& /*value*/) override { return true; }
  bool key(std::string& /*value*/) override { return true; }
  bool start_object(std::size_t /*count*/) override { return GoDown(); }
  bool end_object() override { return GoUp(); }
  bool start_array(std::size_t /*count*/) override { return GoDown(); }
  bool end_array() override { return GoUp(); }
  bool parse_error(std::size_t position, const std::string& /*token*/,
                   const nlohmann::detail::exception& error) override {
    m_failure = SyntaxFailure(m_text, position, ReasonOf(error));
    return false;
  }

 private:
  bool GoDown() {
    if (m_depth++ < kMaxChangeDepth) return true;
    m_failure = SyntaxFailure(m_text, static_cast<std::size_t>(m_seen - m_text.data()),
                              "nests more than 64 deep");
    return false;
  }
  bool GoUp() {
    --m_depth;
    return true;
  }

  std::string_view m_text;
  const char* m_seen = m_text.data();
  std::uint32_t m_depth = 0;
  Failure m_failure;
};

/// Makes changes of what the JSON says.
class CChangeParser {
 public:
  explicit CChangeParser(const Json& root) : m_root(root) {}

  Result<ChangeDocument> Parse() {
    auto document = std::make_unique<ChangeDocument>();
    if (!ReadRoot(*document)) return m_failure;
    return document;
  }

 private:
  bool Refuse(const CString& pointer, const CString& reason) {
    m_failure = ContentFailure(pointer, reason);
    return false;
  }

  bool ReadRoot(ChangeDocument& document) {
    if (!m_root.is_object()) return Refuse("", "is no change document: the JSON is no object");
    for (const auto& member : m_root.items())
      if (member.key() != "format" && member.key() != "version" && member.key() != "document" &&
          member.key() != "changes")
        return Refuse('/' + member.key(), "is no member of a change document");
    if (m_root.value("format", Json()) != Json("qenzor-changes"))
      return Refuse("/format", "is not \"qenzor-changes\"");
    if (m_root.value("version", Json()) != Json(1U)) return Refuse("/version", "is not 1");
    const Json kind = m_root.value("document", Json());
    if (kind != Json("qen") && kind != Json("zor"))
      return Refuse("/document", R"(is neither "qen" nor "zor")");
    document.Document = kind == Json("qen") ? ClassFamily::kQen : ClassFamily::kZor;
    const auto changes = m_root.find("changes");
    if (changes == m_root.end() || !changes->is_array()) return Refuse("/changes", "is no list");
    document.Changes.resize(changes->size());
    for (std::size_t i = 0; i < changes->size(); ++i) {
      m_pointer = "/changes/" + std::to_string(i);
      m_change = &(*changes)[i];
      if (!ReadChange(document.Document, document.Changes[i])) return false;
    }
    return true;
  }

  /// A member of the change at hand, which is counted as known; null when it is not there.
  const Json* Find(std::string_view key) {
    const auto found = m_change->find(key);
    if (found == m_change->end()) return nullptr;
    m_known.push_back(key);
    return &*found;
  }
  CString PointerTo(std::string_view key) const { return m_pointer + '/' + CString(key); }

  bool ReadChange(ClassFamily document, Change& change) {
    if (!m_change->is_object()) return Refuse(m_pointer, "is no object");
    m_known.clear();
    const bool place = document == ClassFamily::kQen ? ReadPlace<CQenMapData>(change.Place)
                                                     : ReadPlace<CZorDrawData>(change.Place);
    if (!place || !ReadOp(change)) return false;
    for (const auto& member : m_change->items())
      if (std::find(m_known.begin(), m_known.end(), member.key()) == m_known.end())
        return Refuse(PointerTo(member.key()), "has no meaning in this change");
    return true;
  }

  /// Follows the steps that the change names, from an object whose sets have places.
  template <class Owner>
  bool ReadPlace(std::vector<PlaceStep>& place) {
    bool read = true;
    work::AllValues(FieldsOf<Owner>(), [&]<class Entry>(const Entry& /*f*/) {
      if constexpr (requires { typename Entry::Chunk::Element; }) {
        using Element = typename Entry::Chunk::Element;
        constexpr std::string_view kKey = work::KeyOfElements<typename Entry::Chunk>();
        const Json* step = Find(kKey);
        if (step == nullptr) return true;
        read = ReadStep(*step, work::Numbered<Element>, place.emplace_back(PlaceStep{kKey, 0, 0}));
        if constexpr (work::Numbered<Element>) read = read && ReadPlace<Element>(place);
        return false;
      } else {
        return true;
      }
    });
    return read;
  }

  bool ReadStep(const Json& json, bool is_numbered, PlaceStep& step) {
    if (json.is_number_unsigned()) {
      step.Number = json.get<std::uint64_t>();
      return true;
    }
    const std::string text = json.is_string() ? json.get<std::string>() : "";
    if (!is_numbered && text == "end") {
      step.Number = PlaceStep::kEnd;
      return true;
    }
    if (is_numbered && text == "all") {
      step.Nth = PlaceStep::kAll;
      return true;
    }
    const char* const end = text.data() + text.size();
    auto parsed = std::from_chars(text.data(), end, step.Number);
    if (parsed.ec == std::errc() && parsed.ptr != end && *parsed.ptr == '#')
      parsed = std::from_chars(parsed.ptr + 1, end, step.Nth);
    if (is_numbered && parsed.ec == std::errc() && parsed.ptr == end) return true;
    return Refuse(PointerTo(step.Key),
                  is_numbered ? "is no number, nor a string as \"7\", \"7#1\" or \"all\""
                              : "is no index, nor \"end\"");
  }

  bool ReadIndex(std::string_view key, std::optional<std::uint32_t>& index) {
    const Json* json = Find(key);
    if (json == nullptr) return true;
    if (!json->is_number_unsigned() || json->get<std::uint64_t>() >= 0xFFFFFFFF)
      return Refuse(PointerTo(key), "is no index");
    index = json->get<std::uint32_t>();
    return true;
  }

  void ReadValue(std::string_view key, CString& value) {
    if (const Json* json = Find(key); json != nullptr) value = json->dump();
  }

  bool ReadOp(Change& change) {
    const Json* op = Find("op");
    const std::string name = op != nullptr && op->is_string() ? op->get<std::string>() : "";
    if (name == "set") return ReadSet(change);
    if (name != "add" && name != "delete" && name != "move")
      return Refuse(PointerTo("op"), R"(is not "set", "add", "delete" or "move")");
    if (change.Place.empty()) return Refuse(m_pointer, "does not tell what it is about");
    const bool is_indexed = work::IsIndexKey(change.Place.back().Key);
    if (!is_indexed && !ReadIndex("position", change.Position)) return false;
    if (name == "move") {
      change.Kind = ChangeKind::kMove;
      if (!ReadIndex("to", change.To)) return false;
      return change.To.has_value() || Refuse(PointerTo("to"), "is missing");
    }
    const bool is_add = name == "add";
    change.Kind = is_add ? ChangeKind::kAdd : ChangeKind::kDelete;
    ReadValue("value", is_add ? change.After : change.Before);
    return !is_add || !change.After.empty() || Refuse(PointerTo("value"), "is missing");
  }

  bool ReadSet(Change& change) {
    const Json* field = Find("field");
    if (field == nullptr || !field->is_string()) return Refuse(PointerTo("field"), "is no text");
    change.Field = field->get<std::string>();
    ReadValue("from", change.Before);
    ReadValue("to", change.After);
    return !change.After.empty() || Refuse(PointerTo("to"), "is missing");
  }

  const Json& m_root;
  const Json* m_change = nullptr;
  std::vector<std::string_view> m_known;  // the members that have been looked at
  CString m_pointer;
  Failure m_failure;
};

}  // namespace

Result<ChangeDocument> ParseChanges(std::string_view json) try {
  if (json.size() > kMaxChangeBytes) {
    Failure failure = ContentFailure("", "longer than a change document may be (256 MiB)");
    failure.Kind = FailureKind::kTooLarge;
    return failure;
  }
  if (const auto failure = CSyntaxCheck(json).Find(); failure.has_value()) return *failure;
  const Json root = Json::parse(json);
  return CChangeParser(root).Parse();
} catch (const std::bad_alloc&) {
  return work::NoMemory();
}

}  // namespace qenzor
