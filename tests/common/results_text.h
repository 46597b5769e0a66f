/*
 * results_text.h: a results handle as text, "ident:score ident:score ...", best first.
 */
#ifndef RESULTS_TEXT_H
#define RESULTS_TEXT_H

#include <gtest/gtest.h>

#include <string>

#include "zvsdk_playlist.h"

inline std::string results_text(playlist_results* results) {
  std::string text;
  const char* ident = nullptr;
  int32_t score = 0;
  for (uint32_t i = 0; zvsdk_playlist_results_enum(results, i, &ident, nullptr) == 0; ++i) {
    EXPECT_EQ(0u, zvsdk_playlist_results_get_score(results, i, &score));
    text += (i ? " " : "") + std::string(ident) + ":" + std::to_string(score);
  }
  return text;
}

#endif
