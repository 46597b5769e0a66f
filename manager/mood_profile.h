/*
 * mood_profile.h: mood profiles, "ID:WEIGHT,ID:WEIGHT,...", heaviest mood first, because readers
 * stop when they have most of the weight; and the plane of valence by energy that the finer moods
 * lie on, which gives every point its profile.
 */
#ifndef MOOD_PROFILE_H
#define MOOD_PROFILE_H

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace manager {

class lists;

/* A profile as text, with the id of its heaviest mood. */
struct mood_profile {
  std::string text;
  uint32_t heaviest;
};

/* True for texts that can only be meant as a profile: pairs of numbers, right or wrong. */
bool looks_like_profile(const char* text);
/* The profile of a text, brought into order. Nothing when it is malformed. */
std::optional<mood_profile> parse_profile(const char* text);

/* The profiles of all points, made when the first is asked for. */
class mood_plane {
 public:
  explicit mood_plane(lists& all) : lists_(all) {}

  /* The profile of a point, which lies between 0 and 1; null when the mood list has no points. It
   * is that of the nearest point of a grid, so that a million tracks share few texts. */
  const mood_profile* at(float valence, float energy);

 private:
  static constexpr int32_t s_steps = 50;  // of the grid, from 0 to 1

  void build();

  lists& lists_;
  std::once_flag built_;
  std::vector<mood_profile> cells_;  // by energy, then valence
};

}  // namespace manager

#endif
