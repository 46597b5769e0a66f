/*
 * playlist_dsp.h: similarities that are measured, not looked up. Scores run from 1000 (the same)
 * down to -1000 (as far apart as the measure goes). They are asked for once for each candidate:
 * bounded time, no allocation, no state.
 *
 *   tempo   two tempos on a perceptual curve
 *   mood    two profiles, short weighted lists of mood ids: the criterion is prepared once (fill,
 *           create, normalize), then each candidate is filled and compared
 */
#ifndef PLAYLIST_DSP_H
#define PLAYLIST_DSP_H

#include "zvsdk_types.h"

/* There is nothing to compare. A bare number outside the layout of status codes: no error. */
inline constexpr zvsdk_status playlist_dsp_nothing_to_compare = 62;

/* Where state of this file would be made and ended; there is none. */
zvsdk_status playlist_dsp_initialize();
zvsdk_status playlist_dsp_shutdown();

/*
 * How alike two tempos are to the ear: the distance of their places on a perceptual curve that is
 * steep among slow tempos and flat in the middle. Symmetric; 1000 to -999.
 */
zvsdk_status dsp_primary_tempo_similarity(uint32_t a, uint32_t b, int32_t* score);

inline constexpr uint32_t playlist_mood_limit = 17; /* moods of a profile */

/* A profile as read from its text. */
struct playlist_mood_vector {
  uint32_t count;
  uint32_t ids[playlist_mood_limit];
  uint32_t weights[playlist_mood_limit]; /* parts of about 100, none of them 0 */
};

/* The criterion's side of a comparison. */
struct playlist_normalized_mood_vector {
  uint32_t count;
  uint32_t ids[playlist_mood_limit];
  float reference[playlist_mood_limit];            /* 100 for a mood that has correlates, else 0 */
  zvsdk_correlates_set* sets[playlist_mood_limit]; /* owned; null for a mood that has none */
};

/*
 * Reads "ID:WEIGHT,ID:WEIGHT,...", heaviest first, until the pairs cover 80 parts or the vector is
 * full; the rest is not looked at. A text that has no such pair, or none, gives an empty vector.
 */
zvsdk_status playlist_fill_mood_vector(const char* text, playlist_mood_vector* vector);

zvsdk_status playlist_create_normalized_mood_vector(playlist_normalized_mood_vector** vector);
/* Null is a no-op. */
zvsdk_status playlist_delete_normalized_mood_vector(playlist_normalized_mood_vector* vector);
/* Fills a new record: each mood of the source becomes an axis, whatever its weight. Nothing to
 * compare when the source is empty. */
zvsdk_status dsp_mood_normalize_vector(const playlist_mood_vector* source,
                                       playlist_normalized_mood_vector* normalized,
                                       zvsdk_correlates* correlates);
/*
 * How near a candidate comes to the point that has all of the criterion's moods in full. The sides
 * cannot be swapped. Nothing to compare, with a score of 0, when either has no mood. `correlates`
 * plays no part.
 */
zvsdk_status dsp_mood_similarity(zvsdk_correlates* correlates,
                                 const playlist_normalized_mood_vector* criterion,
                                 const playlist_mood_vector* candidate, int32_t* score);

#endif
