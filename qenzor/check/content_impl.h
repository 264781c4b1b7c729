#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "qenzor/check/finding.h"
#include "qenzor/check/schema_impl.h"
#include "qenzor/platform/geometry.h"

namespace qenzor::check {

/// Hears what a document holds, in the order of its file, whatever form that has. What reading
/// drops is left out. Offsets are those of the file.
class CContentListener {
 public:
  virtual ~CContentListener() = default;

  /// A chunk begins. Its own number, if it bears one, is not known yet.
  virtual void Open(const PathNode& /*node*/, const ClassSchema& /*schema*/,
                    std::uint64_t /*offset*/) {}
  /// A chunk ends that has kept so many elements or sub-chunks.
  virtual void Close(const PathNode& /*node*/, const ClassSchema& /*schema*/,
                     std::uint64_t /*kept*/) {}
  /// A record of an array begins; its fields follow.
  virtual void Record(const PathNode& /*node*/, const FieldSchema& /*field*/,
                      std::uint64_t /*offset*/) {}
  /// An integer field, or array element, that has a role.
  virtual void Integer(const PathNode& /*node*/, const FieldSchema& /*field*/,
                       std::uint64_t /*value*/, std::uint64_t /*offset*/) {}
  virtual void Rect(const PathNode& /*node*/, const FieldSchema& /*field*/, const CRect& /*rect*/,
                    std::uint64_t /*offset*/) {}
  /// The identification, as long as it is.
  virtual void Ident(const PathNode& /*node*/, std::string_view /*ident*/,
                     std::uint64_t /*offset*/) {}
  /// A text that has a role, or any for those who want more.
  virtual void Text(const PathNode& /*node*/, const FieldSchema& /*field*/,
                    std::u16string_view /*text*/, std::uint64_t /*offset*/) {}

  // What only some want to hear of, since there is so much of it.
  virtual bool WantsMore() const { return false; }
  virtual void Real(const PathNode& /*node*/, const FieldSchema& /*field*/, float /*value*/,
                    std::uint64_t /*offset*/) {}
  virtual void Point(const PathNode& /*node*/, const FieldSchema& /*field*/,
                     const CPoint& /*point*/, std::uint64_t /*offset*/) {}
};

/// Tells two listeners.
class CBothListeners : public CContentListener {
 public:
  CBothListeners(CContentListener& first, CContentListener& second)
      : m_first(first), m_second(second) {}

  bool WantsMore() const override { return m_first.WantsMore() || m_second.WantsMore(); }
  void Open(const PathNode& node, const ClassSchema& schema, std::uint64_t offset) override {
    Tell([&](auto& listener) { listener.Open(node, schema, offset); });
  }
  void Close(const PathNode& node, const ClassSchema& schema, std::uint64_t kept) override {
    Tell([&](auto& listener) { listener.Close(node, schema, kept); });
  }
  void Record(const PathNode& node, const FieldSchema& field, std::uint64_t offset) override {
    Tell([&](auto& listener) { listener.Record(node, field, offset); });
  }
  void Integer(const PathNode& node, const FieldSchema& field, std::uint64_t value,
               std::uint64_t offset) override {
    Tell([&](auto& listener) { listener.Integer(node, field, value, offset); });
  }
  void Rect(const PathNode& node, const FieldSchema& field, const CRect& rect,
            std::uint64_t offset) override {
    Tell([&](auto& listener) { listener.Rect(node, field, rect, offset); });
  }
  void Ident(const PathNode& node, std::string_view ident, std::uint64_t offset) override {
    Tell([&](auto& listener) { listener.Ident(node, ident, offset); });
  }
  void Real(const PathNode& node, const FieldSchema& field, float value,
            std::uint64_t offset) override {
    Tell([&](auto& listener) { listener.Real(node, field, value, offset); });
  }
  void Point(const PathNode& node, const FieldSchema& field, const CPoint& point,
             std::uint64_t offset) override {
    Tell([&](auto& listener) { listener.Point(node, field, point, offset); });
  }
  void Text(const PathNode& node, const FieldSchema& field, std::u16string_view text,
            std::uint64_t offset) override {
    Tell([&](auto& listener) { listener.Text(node, field, text, offset); });
  }

 private:
  template <class F>
  void Tell(F&& f) {
    f(m_first);
    f(m_second);
  }

  CContentListener& m_first;
  CContentListener& m_second;
};

}  // namespace qenzor::check
