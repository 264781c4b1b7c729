#pragma once

// The lines that XML text is made of, put together in the text file's own buffer.

#include <array>
#include <cassert>
#include <cstring>
#include <string_view>

#include "qenzor/platform/code_page.h"
#include "qenzor/platform/digits_impl.h"
#include "qenzor/platform/file.h"
#include "qenzor/platform/geometry.h"
#include "qenzor/platform/numbers.h"

namespace qenzor {

/// Text that grows at its end, in room that the caller has made large enough.
class CTextCursor {
 public:
  explicit CTextCursor(std::uint8_t* at) : m_at(reinterpret_cast<char*>(at)) {}

  CTextCursor& operator<<(std::string_view text) {
    std::memcpy(m_at, text.data(), text.size());
    m_at += text.size();
    return *this;
  }
  CTextCursor& operator<<(char c) {
    *m_at++ = c;
    return *this;
  }
  template <class Number>
  requires std::is_arithmetic_v<Number> CTextCursor& operator<<(Number number) {
    if constexpr (std::is_floating_point_v<Number>)
      m_at = FormatFixed10(m_at, static_cast<double>(number));
    else if constexpr (sizeof(Number) == 8)
      m_at = FormatUInt64(m_at, number);
    else if constexpr (std::is_signed_v<Number>)
      m_at = FormatInt32(m_at, number);
    else
      m_at = FormatUInt32(m_at, number);
    return *this;
  }
  /// A coordinate: nearly all the numbers of a map, put down without a call.
  CTextCursor& Coordinate(std::int32_t value) {
    const std::uint32_t size =
        value < 0 ? 0 - static_cast<std::uint32_t>(value) : static_cast<std::uint32_t>(value);
    if (size >= kFewDigitsEnd) return *this << value;
    *m_at = '-';
    m_at = PutFewDigits(m_at + (value < 0 ? 1 : 0), size);
    return *this;
  }
  /// The front of the text, all of which is copied: a fixed size is quicker than the right one.
  void PutFront(std::string_view text, std::size_t size) {
    constexpr std::size_t kFixed = 64;
    assert(text.size() == kFixed && size <= kFixed);
    std::memcpy(m_at, text.data(), kFixed);
    m_at += size;
  }
  CTextCursor& Tabs(std::uint32_t count) {
    std::memset(m_at, '\t', count);
    m_at += count;
    return *this;
  }
  std::uint8_t* GetEnd() const { return reinterpret_cast<std::uint8_t*>(m_at); }

 private:
  char* m_at;
};

/// The room that one number takes, with what a formatter may write behind it.
inline constexpr std::uint32_t kMaxNumberLength = kFixed10MaxLength;
inline constexpr std::uint32_t kMaxIntLength = 16;

class CXmlWriter {
 public:
  CXmlWriter(CStdioFile& file, std::uint32_t level) : m_file(file), m_level(level) {}

  CXmlWriter Deeper() const { return {m_file, m_level + 1}; }
  CStdioFile& GetFile() const { return m_file; }
  std::uint32_t GetLevel() const { return m_level; }

  void OpenTag(std::string_view tag) {
    Line(tag.size() + 2, [&](CTextCursor& out) { out << '<' << tag << '>'; });
  }
  void CloseTag(std::string_view tag) {
    Line(tag.size() + 3, [&](CTextCursor& out) { out << "</" << tag << '>'; });
  }
  template <class Number>
  void Value(std::string_view tag, Number number) {
    Line(2 * tag.size() + 5 + kMaxNumberLength,
         [&](CTextCursor& out) { out << '<' << tag << '>' << number << "</" << tag << '>'; });
  }
  void Color(std::string_view tag, std::uint32_t color) {
    Line(tag.size() + 64, [&](CTextCursor& out) { PutColor(out, tag, color); });
  }
  void Point(std::string_view tag, std::int32_t x, std::int32_t y) {
    Line(tag.size() + 64,
         [&](CTextCursor& out) { out << '<' << tag << " x=\"" << x << "\" y=\"" << y << "\" />"; });
  }
  /// A point element for each. What all lines have in common is put together once, and room is
  /// asked for many lines at a time.
  template <class Points>
  void PointLines(std::string_view tag, const Points& points) {
    constexpr std::size_t kFront = 64;
    constexpr std::string_view kMiddle = "\" y=\"";
    constexpr std::string_view kBack = "\" />\r\n";
    constexpr std::size_t kLongest =
        kFront + std::size_t{2} * kMaxIntLength + kMiddle.size() + kBack.size();
    constexpr std::size_t kLines = 256;
    static_assert(kLines * kLongest <= CStdioFile::kMaxBlock);
    const std::size_t size = m_level + tag.size() + std::string_view("< x=\"").size();
    if (size > kFront) {
      for (const auto& point : points) Point(tag, point.x, point.y);
      return;
    }
    std::array<std::uint8_t, kFront> front{};
    CTextCursor(front.data()).Tabs(m_level) << '<' << tag << " x=\"";
    const std::string_view begin(reinterpret_cast<const char*>(front.data()), kFront);
    for (auto point = points.begin(); point != points.end();) {
      Put(kLines * kLongest, [&](CTextCursor& out) {
        for (std::size_t left = kLines; left > 0 && point != points.end(); --left, ++point) {
          out.PutFront(begin, size);
          out.Coordinate(point->x) << kMiddle;
          out.Coordinate(point->y) << kBack;
        }
      });
    }
  }
  void Rect(std::string_view tag, const CRect& rect) {
    Line(tag.size() + 96, [&](CTextCursor& out) {
      out << '<' << tag << " W=\"" << rect.left << "\" S=\"" << rect.top << "\" E=\"" << rect.right
          << "\" N=\"" << rect.bottom << "\" />";
    });
  }
  /// A value element whose value is text, escaped.
  void Text(std::string_view tag, std::string_view value) {
    Indent();
    TextElement(tag, value);
    EndLine();
  }

  // The pieces of a line, for lines of another make.
  void Indent() {
    for (std::uint32_t left = m_level; left > 0;) {
      const std::uint32_t count = std::min(left, kMaxIndentInBlock);
      Put(count, [count](CTextCursor& out) { out.Tabs(count); });
      left -= count;
    }
  }
  void TextElement(std::string_view tag, std::string_view value);
  void EndLine() {
    Put(2, [](CTextCursor& out) { out << "\r\n"; });
  }

  static void PutColor(CTextCursor& out, std::string_view tag, std::uint32_t color) {
    out << '<' << tag << " A=\"" << (color >> 24) << "\" R=\"" << (color >> 16 & 0xFF) << "\" G=\""
        << (color >> 8 & 0xFF) << "\" B=\"" << (color & 0xFF) << "\" />";
  }

 private:
  static constexpr std::uint32_t kMaxIndentInBlock = 1024;

  template <class Fill>
  void Put(std::size_t size, Fill&& fill) {
    CTextCursor out(m_file.BeginText(static_cast<std::uint32_t>(size)));
    fill(out);
    m_file.EndBlock(out.GetEnd());
  }
  /// One whole line of at most size characters between indent and line end.
  template <class Fill>
  void Line(std::size_t size, Fill&& fill) {
    if (m_level > kMaxIndentInBlock) {
      Indent();
      Put(size + 2, [&](CTextCursor& out) { fill(out), out << "\r\n"; });
      return;
    }
    Put(m_level + size + 2, [&](CTextCursor& out) {
      out.Tabs(m_level);
      fill(out);
      out << "\r\n";
    });
  }

  CStdioFile& m_file;
  std::uint32_t m_level;
};

}  // namespace qenzor
