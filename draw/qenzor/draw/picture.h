#pragma once

#include "qenzor/draw/draw_list.h"
#include "qenzor/draw/page.h"

namespace qenzor {

/// What a picture is to show.
struct PictureContent {
  const CQen* Map = nullptr;
  const CZor* Drawing = nullptr;  ///< may be null: everything is drawn plainly
  FrameOptions Frame;
  Filters Which;              ///< a box is also what the picture shows
  bool DefaultStyle = false;  ///< draw plainly what has no draw attribute
  PageOptions Page;
};

/// A picture before it is drawn: what lies where on which page. Map and drawing must outlive it.
class QENZOR_EXPORT CPicture {
 public:
  /// Without a box the picture shows the rectangle of all objects that pass the filters; without
  /// those, the map's. The sink hears of what is odd in the documents, each thing once, up to some
  /// number of them.
  static Result<CPicture> Plan(const PictureContent& content, const WarningSink& warn);

  const CFrame& GetFrame() const { return m_frame; }
  const CPage& GetPage() const { return m_page; }
  const CDrawList& GetList() const { return m_list; }
  /// Whether any object passes the filters, drawn or not.
  bool HasObjects() const { return m_has_objects; }

 private:
  CPicture(const CFrame& frame, const CPage& page, CDrawList list, bool has_objects)
      : m_frame(frame), m_page(page), m_list(std::move(list)), m_has_objects(has_objects) {}

  CFrame m_frame;
  CPage m_page;
  CDrawList m_list;
  bool m_has_objects;
};

}  // namespace qenzor
