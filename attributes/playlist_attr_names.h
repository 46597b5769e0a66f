/*
 * playlist_attr_names.h: what the three name attributes share: their operators, the comparison of a
 * stored name with a criterion, and the values that a stored name gives back. Comparing allocates
 * nothing for names under 200 bytes and is called once for each candidate.
 */
#ifndef PLAYLIST_ATTR_NAMES_H
#define PLAYLIST_ATTR_NAMES_H

#include "attributes/playlist_attr_common.h"

/* A LIKE candidate passes at six tenths, whatever the criterion came from. */
inline constexpr playlist_attr_thresholds playlist_name_thresholds = {
    .from_seed = 600, .by_level = {600, 600, 600, 600}};

/* Scores a stored name against one criterion. */
using playlist_name_scorer = int32_t (*)(const char* stored, const char* criterion);

/* The scorer of an operator; null for one that names do not have. */
playlist_name_scorer playlist_name_scorer_of(uint32_t op);
/* The operators by index; unsupported past the end. */
zvsdk_status playlist_name_operator_at(uint32_t index, uint32_t* op);
/* The stored name itself, under the display key and under the attribute's name. */
zvsdk_status playlist_name_value(const char* attribute_name, const char* stored, const char* key,
                                 const char** value);

#endif
