// Where XML text comes from: files that change while they are read, pipes, and texts that are made
// to take long.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <fstream>
#include <thread>

#include "qenzor/qen_xml.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

const std::string kXml = "<Qen><QenFileInfo><Revision>7</Revision></QenFileInfo></Qen>\n";

/// A file that tells a length of its own.
class LyingFile : public CFile {
 public:
  LyingFile(std::string text, std::uint64_t length) : m_text(std::move(text)), m_length(length) {}

  std::uint32_t Read(void* data, std::uint32_t size) override {
    const std::size_t count = std::min<std::size_t>(size, m_text.size() - m_at);
    std::memcpy(data, m_text.data() + m_at, count);
    m_at += count;
    return static_cast<std::uint32_t>(count);
  }
  std::uint64_t GetLength() const override { return m_length; }
  std::uint64_t GetPosition() const override { return m_at; }

 private:
  std::string m_text;
  std::uint64_t m_length;
  std::size_t m_at = 0;
};

TEST(XmlSource, AFileCutShortWhileItIsReadIsRefused) {
  LyingFile file(kXml, kXml.size() + 1);
  const auto edit = ReadQenXml(file);
  ASSERT_FALSE(edit);
  EXPECT_EQ(edit.GetFailure().Kind, FailureKind::kCannotRead);
}

TEST(XmlSource, WhatAFileGrowsByIsNotRead) {
  LyingFile file(kXml + "<broken", kXml.size());
  const auto edit = ReadQenXml(file);
  ASSERT_TRUE(edit);
  EXPECT_EQ(edit->Revision, 7U);
}

TEST(XmlSource, AFileWithoutALengthIsReadToItsEnd) {
  LyingFile file(kXml, 0);
  EXPECT_TRUE(ReadQenXml(file));
  LyingFile broken(kXml + "<broken", 0);
  EXPECT_FALSE(ReadQenXml(broken));
}

TEST(XmlSource, APipeIsReadToItsEnd) {
  const TempFile pipe;
  ASSERT_EQ(::mkfifo(pipe.Path().c_str(), 0600), 0);
  std::string text = kXml;
  text.insert(5, std::string(300000, ' '));
  std::thread writer([&] { std::ofstream(pipe.Path(), std::ios::binary) << text; });
  const auto edit = ReadQenXml(pipe.Path());
  writer.join();
  ASSERT_TRUE(edit) << edit.GetFailure().Describe();
  EXPECT_EQ(edit->Revision, 7U);
}

std::string Repeat(std::size_t count, const std::string& text) {
  std::string repeated;
  for (; count > 0; --count) repeated += text;
  return repeated;
}

double TimeOf(const std::string& text) {
  const auto now = [] {
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
  };
  double best = 1e9;
  for (int i = 0; i < 3; ++i) {
    const double begin = now();
    static_cast<void>(ParseQenXml(text));
    best = std::min(best, now() - begin);
  }
  return best;
}

// Of four times the text, four times the work; squared it would be sixteen.
TEST(XmlSource, NoTextTakesMoreThanItsLength) {
  using Make = std::string (*)(std::size_t);
  const Make makers[] = {
      [](std::size_t n) { return "<Qen><a b='" + Repeat(n, "x") + "'/></Qen>"; },
      [](std::size_t n) { return "<Qen><a b='" + Repeat(n, "x"); },
      [](std::size_t n) { return "<Qen>" + Repeat(n / 8, "&amp; x ") + "</Qen>"; },
      [](std::size_t n) { return "<Qen>" + Repeat(n / 4, "&#1;") + "</Qen>"; },
      [](std::size_t n) { return "<Qen>" + Repeat(n / 4, "&#  "); },
      [](std::size_t n) { return "<Qen><!--" + Repeat(n / 2, "- ") + "--></Qen>"; },
      [](std::size_t n) { return "<Qen><![CDATA[" + Repeat(n / 2, "] ") + "]]></Qen>"; },
      [](std::size_t n) { return "<Qen>" + Repeat(200, "<a>" + Repeat(n / 400, "x")) + "</a>"; },
      [](std::size_t n) {
        return "<Qen>" + Repeat(200, "<a>") + Repeat(n / 8, "<b></b>\n") + Repeat(200, "</a>") +
               "</Qen>";
      },
      [](std::size_t n) { return "<Qen>" + Repeat(n, "\n") + "</Qen>" + Repeat(n, "\r"); },
      [](std::size_t n) { return "<?xml version='1.0'?><Qen>" + Repeat(n, "\xE3") + "</Qen>"; }};
  constexpr std::size_t kSize = 500000;
  for (const Make make : makers) {
    const double small = TimeOf(make(kSize));
    const double large = TimeOf(make(4 * kSize));
    EXPECT_LT(large, 9 * small + 0.02) << make(60);
  }
}

}  // namespace
}  // namespace qenzor::testing
