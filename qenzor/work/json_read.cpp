#include "qenzor/work/json_read_impl.h"

namespace qenzor::work {

namespace {

template <class Number>
std::optional<Number> ParseAll(std::string_view text, int base) {
  Number number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace

bool CJsonReader::ReadText(const Json& json, CStringW& value) {
  if (json.is_string()) {
    value = DecodeText(json.get_ref<const std::string&>(), TextEncoding::kUtf8);
    return true;
  }
  if (!json.is_array()) return Refuse("is no text");
  value.resize(json.size());
  return ForEach(json, [&](const Json& unit, std::size_t i) {
    std::uint16_t code = 0;
    if (!ReadInteger(unit, code)) return false;
    value[i] = code;
    return true;
  });
}

bool CJsonReader::ReadFloat(const Json& json, float& value) {
  if (json.is_number()) {
    value = json.get<float>();
    return true;
  }
  const std::string text = json.is_string() ? json.get<std::string>() : "";
  constexpr std::string_view kNan = "nan:";
  if (text == "inf" || text == "-inf") {
    value = std::numeric_limits<float>::infinity() * (text.front() == '-' ? -1.0F : 1.0F);
    return true;
  }
  const auto bits = text.starts_with(kNan)
                        ? ParseAll<std::uint32_t>(std::string_view(text).substr(kNan.size()), 16)
                        : std::nullopt;
  if (!bits.has_value() || std::bit_cast<float>(*bits) == std::bit_cast<float>(*bits))
    return Refuse(R"(is no number, "inf", "-inf" or "nan:" and its bits)");
  value = std::bit_cast<float>(*bits);
  return true;
}

bool CJsonReader::ReadColor(const Json& json, std::uint32_t& value) {
  constexpr std::size_t kLength = 9;
  const std::string text = json.is_string() ? json.get<std::string>() : "";
  const auto color = text.size() == kLength && text.front() == '#'
                         ? ParseAll<std::uint32_t>(std::string_view(text).substr(1), 16)
                         : std::nullopt;
  if (!color.has_value()) return Refuse(R"(is no colour "#AARRGGBB")");
  value = *color;
  return true;
}

bool CJsonReader::ReadIdent(const Json& json, std::span<char> value) {
  const auto refuse = [&] {
    return Refuse("is no identification of " + std::to_string(value.size()) + " characters");
  };
  if (json.is_string()) {
    const auto& text = json.get_ref<const std::string&>();
    if (text.size() != value.size()) return refuse();
    std::copy(text.begin(), text.end(), value.begin());
    return true;
  }
  if (!json.is_array() || json.size() != value.size()) return refuse();
  return ForEach(json, [&](const Json& code, std::size_t i) {
    std::uint8_t byte = 0;
    if (!ReadInteger(code, byte)) return false;
    value[i] = static_cast<char>(byte);
    return true;
  });
}

bool CJsonReader::ReadWide(const Json& json, std::uint64_t& value) {
  if (json.is_number_unsigned()) {
    value = json.get<std::uint64_t>();
    return true;
  }
  const auto number = json.is_string()
                          ? ParseAll<std::uint64_t>(json.get_ref<const std::string&>(), 10)
                          : std::nullopt;
  if (!number.has_value())
    return Refuse("is no integer from 0 to 18446744073709551615, as a number or a string");
  value = *number;
  return true;
}

}  // namespace qenzor::work
