#pragma once

#include <memory>
#include <vector>

#include "qenzor/draw/clip_impl.h"

namespace qenzor {

/// The places of a picture that labels have taken, in a spatial index.
class CTakenPlaces {
 public:
  CTakenPlaces();
  ~CTakenPlaces();
  CTakenPlaces(const CTakenPlaces&) = delete;
  CTakenPlaces& operator=(const CTakenPlaces&) = delete;

  /// Takes the boxes, unless one of them meets a box that was taken before.
  bool Take(const std::vector<PageBox>& boxes);

 private:
  struct Index;
  std::unique_ptr<Index> m_index;
};

}  // namespace qenzor
