/*
 * zcsl_stringtable_internal.h: the string table from inside: its record, and a view for scans over
 * many references, which costs a few loads a text. Internal.
 *
 * A view is for a caller that keeps writers out while it uses it: any change to the table ends it.
 */
#ifndef ZCSL_STRINGTABLE_INTERNAL_H
#define ZCSL_STRINGTABLE_INTERNAL_H

#include "support/zcsl_accum.h"
#include "support/zcsl_container.h"
#include "support/zcsl_hashmap.h"
#include "support/zcsl_stringtable.h"
#include "support/zcsl_vector2.h"

/* One text ever added since the last attach. */
struct zcsl_stringtable_record {
  uint32_t offset; /* in the text block; 0 for a removed text */
  uint32_t hash;
  uint32_t link; /* the next record of the same hash, 0 for none */
};

/* Its lock is never created: whoever shares a table provides one. */
struct zcsl_stringtable : zcsl_container_head<0x2ABCDEF3, zcsl_critsec> {
  static constexpr const char* source = "zcsl_stringtable";

  uint32_t flags = 0; /* nothing reads them */
  zcsl_accum* text = nullptr;
  zcsl_vector2* records = nullptr; /* of zcsl_stringtable_record */
  zcsl_vector2* order = nullptr;   /* of uint32_t: record indexes of the live texts, ascending */
  zcsl_hashmap* index = nullptr;   /* hash to record index */
  uint32_t removed = 0;            /* since the last attach */
};

/* The hash under which a text is indexed: Bernstein's, times 33. Case counts. */
uint32_t zcsl_stringtable_hash(const char* string);

struct zcsl_stringtable_view {
  const uint32_t* order; /* record indexes of the live texts, ascending */
  uint32_t count;
  const zcsl_stringtable_record* records;
  uint32_t record_count;
  const char* text;
  uint32_t text_size;

  /* An empty view for a null table. */
  explicit zcsl_stringtable_view(zcsl_stringtable* table);

  /* The reference at a position below `count`. */
  zcsl_stringtable_ref ref_at(uint32_t position) const { return order[position] + 1; }

  /* The text of a reference; null for one that is removed, past the end or damaged. */
  const char* text_of(zcsl_stringtable_ref ref) const {
    if (ref - 1 >= record_count) return nullptr;
    const uint32_t offset = records[ref - 1].offset;
    return valid(offset) ? text + offset : nullptr;
  }

  /* Texts start behind a 0x00 byte, within the block. */
  bool valid(uint32_t offset) const {
    return offset != 0 && offset < text_size && text[offset - 1] == 0;
  }
};

#endif
