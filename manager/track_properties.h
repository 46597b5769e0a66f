/*
 * track_properties.h: what a track description says about lists, as the attributes read it: ids,
 * and the mood's profile.
 */
#ifndef TRACK_PROPERTIES_H
#define TRACK_PROPERTIES_H

#include <array>
#include <charconv>

#include "manager/host.h"

namespace manager {

/* A text that says something. */
inline bool given(const char* text) {
  return text != nullptr && *text != '\0';
}

/* Decimal text of a number; 0 is unknown and gives an empty one. */
class decimal {
 public:
  explicit decimal(uint32_t number) {
    if (number != 0) std::to_chars(text_, text_ + sizeof text_ - 1, number);
  }
  const char* c_str() const { return text_; }

 private:
  char text_[12] = {};
};

enum class track_property { genre, mood, era, origin, artist_type };
inline constexpr size_t track_property_count = 5;

class track_properties {
 public:
  /* A name that no list knows is refused or, where a mask is given, noted there. */
  track_properties(host& h, const zvsdk_track_description& track, uint32_t* unknown);
  track_properties(const track_properties&) = delete;
  track_properties& operator=(const track_properties&) = delete;

  /* A list id, or 0. */
  uint32_t id(track_property which) const { return ids_[static_cast<size_t>(which)]; }
  /* Or "". */
  const char* mood_profile() const { return mood_profile_; }

 private:
  void read_mood(const zvsdk_track_description& track);
  void read_mood_point(const zvsdk_track_description& track);
  void stand_for_itself();
  void read_id(track_property which, const char* text);
  void read_name(track_property which, const char* name);
  void note_unknown(track_property which, const std::string& text, const char* why);
  const std::string& language();
  uint32_t& id(track_property which) { return ids_[static_cast<size_t>(which)]; }

  host& host_;
  uint32_t* unknown_;  // null: unknown names are refused
  std::array<uint32_t, track_property_count> ids_{};
  std::string own_profile_;
  const char* mood_profile_ = "";  // own_profile_'s or the host's
  std::string language_;           // of names, once one was looked up
  bool has_language_ = false;
};

}  // namespace manager

#endif
