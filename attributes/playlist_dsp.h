/*
 * playlist_dsp.h: similarities that are measured, not looked up. Scores run from 1000 (the same)
 * down to -1000 (as far apart as the measure goes). Constant time, no allocation, no state.
 */
#ifndef PLAYLIST_DSP_H
#define PLAYLIST_DSP_H

#include "zvsdk_types.h"

/* There is nothing to compare. A bare number outside the layout of status codes: no error. */
inline constexpr zvsdk_status playlist_dsp_nothing_to_compare = 62;

/*
 * How alike two tempos are to the ear: the distance of their places on a perceptual curve that is
 * steep among slow tempos and flat in the middle. Symmetric; 1000 to -999.
 */
zvsdk_status dsp_primary_tempo_similarity(uint32_t a, uint32_t b, int32_t* score);

#endif
