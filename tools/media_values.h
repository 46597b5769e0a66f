// media_values.h: all that a collection holds for one track, out of the data object that it serves.
#ifndef ZVPLAYLIST_MEDIA_VALUES_H
#define ZVPLAYLIST_MEDIA_VALUES_H

#include <string>
#include <vector>

#include "zvsdk_manager.h"

namespace zvplaylist {

// What a collection holds of one attribute for a track.
struct attribute_values {
  std::string attribute;
  std::vector<std::string> texts;  // in the language of the session
  std::string id;                  // or the plain number that was stored, such as a tempo
  std::string profile;             // of the mood: "ID:WEIGHT,..."
};

// Every attribute that the collection carries, in its order, also those without a value.
std::vector<attribute_values> read_media(zvsdk_sdkmanager* manager, zvsdk_zdo* media);

}  // namespace zvplaylist

#endif
