/*
 * playlist_coll_serialize.h: a collection as bytes and back (docs/format.md). Strings and records
 * travel as the blocks that they are in memory, so writing is a handful of copies, and reading is
 * that and the indexing of the strings.
 */
#ifndef PLAYLIST_COLL_SERIALIZE_H
#define PLAYLIST_COLL_SERIALIZE_H

#include <algorithm>
#include <bit>

#include "collections/playlist_collection.h"

/* What one block of the data holds; its first value. */
enum {
  playlist_block_header = 0x11111111,
  playlist_block_attribute = 0x22222222,
  playlist_block_idents = 0x33333333,
  playlist_block_strings = 0x44444444
};
/* The flag of an attribute block whose records are one raw. */
inline constexpr uint32_t playlist_block_flag_raw_records = 1;
/* The version that is written. Version 1 is read as well. */
inline constexpr uint32_t playlist_block_version = 2;

/* Between the byte order of records here and in the data, which is little-endian everywhere. */
inline void playlist_swap_wire_order(uint8_t* records, uint32_t size) {
  if constexpr (std::endian::native == std::endian::big)
    for (uint32_t i = 0; i < size; i += 4) std::reverse(records + i, records + i + 4);
}

/* A size that the serialized form never exceeds. The caller holds the collection's lock. */
zvsdk_status _playlist_coll_calc_size(playlist_collection* collection, uint32_t* size);
/*
 * Makes the serialized form, which the caller frees with zcsl_memory_free. Always 0: a failure
 * leaves both outputs as they were, so set them to zero before. The caller holds the collection's
 * lock.
 */
zvsdk_status _playlist_coll_serialize(playlist_collection* collection, void** data,
                                      uint32_t* length);
/*
 * A bare collection from data, which may be any bytes at all. Nothing of the data is kept. A
 * failure within the last five bytes is error_corrupt_data, whatever its cause.
 */
zvsdk_status _playlist_coll_deserialize(const void* data, uint32_t length,
                                        playlist_collection** collection);

#endif
