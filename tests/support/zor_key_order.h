#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <vector>

namespace qenzor::testing {

using Keys = std::vector<std::uint64_t>;

inline constexpr std::uint32_t kChunkBuckets = 8191;
inline constexpr std::uint32_t kEditBuckets = 17;

/// The bucket of a key, worked out without the library: one step of the minimal standard random
/// number generator on the key's low half.
inline std::uint32_t ReferenceBucket(std::uint64_t key, std::uint32_t buckets) {
  const std::int64_t low = static_cast<std::int32_t>(static_cast<std::uint32_t>(key));
  std::int64_t step = 16807 * (low % 127773) - 2836 * (low / 127773);
  if (step < 0) step += 2147483647;
  return static_cast<std::uint32_t>(step) % buckets;
}

/// The order in which a keyed set walks keys that were added to it in this order: by bucket, in a
/// bucket the latest first. A key that is added again keeps its place.
inline Keys ReferenceWalk(const Keys& added, std::uint32_t buckets) {
  std::map<std::uint32_t, Keys> found;
  for (const std::uint64_t key : added) {
    Keys& bucket = found[ReferenceBucket(key, buckets)];
    if (std::find(bucket.begin(), bucket.end(), key) == bucket.end())
      bucket.insert(bucket.begin(), key);
  }
  Keys walk;
  for (const auto& [number, bucket] : found) walk.insert(walk.end(), bucket.begin(), bucket.end());
  return walk;
}

}  // namespace qenzor::testing
