// Similarity of two texts by their bigrams.

#include "support/zcsl_fuzzy.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "support/zcsl_error.h"
#include "support/zcsl_output.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_utf8.h"
#include "zvsdk_runtime.h"

// An entry has its first code point in the low half and its second in the high half; a second one
// of 0 is the boundary of a word, on either side.
struct zcsl_bigram_table {
  uint32_t count;
  uint32_t entries[];
};

namespace {

constexpr uint32_t s_stack_entries = 200;

// The entries of one text, in a table on the stack or on the heap.
using bigrams = std::span<uint32_t>;

// Fills a table from a text. A character that does not decode ends the text, and so does a full
// table.
class bigram_filler {
 public:
  bigram_filler(const char* text, bigrams entries) : position_(text), entries_(entries) {}

  // The entries written, or none when the text is blank and blanks part words.
  uint32_t fill(bool split_words) {
    uint32_t previous = 0;
    bool decoded = read(&previous);
    if (split_words && _utf8_is_blank(previous)) {
      decoded = skip_blanks(&previous);
      if (!decoded && at_end()) return 0;
    }
    if (!decoded) previous = 0;
    previous = _utf8_fold(previous);
    put(previous);
    uint32_t next;
    while (previous != 0 && read(&next)) {
      if (split_words && _utf8_is_blank(next)) {
        put(previous);
        if (!skip_blanks(&next)) break;
        next = _utf8_fold(next);
        put(next);
      } else {
        next = _utf8_fold(next);
        put(previous | (next << 16));
      }
      previous = next;
    }
    return count_;
  }

 private:
  void put(uint32_t entry) {
    if (count_ < entries_.size()) entries_[count_++] = entry;
  }
  bool read(uint32_t* code_point) { return _utf8_get_next_char(&position_, code_point) == 0; }

  bool at_end() const { return *position_ == 0; }

  // Reads on to the first code point that is no blank; false at the end and where none decodes.
  bool skip_blanks(uint32_t* code_point) {
    do {
      if (at_end() || !read(code_point)) return false;
    } while (_utf8_is_blank(*code_point));
    return true;
  }

  const char* position_;
  bigrams entries_;
  uint32_t count_ = 0;
};

// The most that a text can need: one entry for each byte, and one more.
size_t entries_needed(const char* text) {
  return std::strlen(text) + 1;
}

// `entries` has the room that the text needs. A blank text under split_words keeps the table as it
// was: all its entries, each of them 0.
uint32_t _bigram_fill_table(const char* text, bool split_words, bigrams entries) {
  const uint32_t count = bigram_filler(text, entries).fill(split_words);
  if (count > 0) return count;
  std::ranges::fill(entries, 0);
  return static_cast<uint32_t>(entries.size());
}

// Null without memory, and for a text whose entries cannot be counted.
zcsl_bigram_table* _bigram_create_table(const char* text, bool split_words) {
  const size_t needed = entries_needed(text);
  if (needed > UINT32_MAX) return nullptr;
  const size_t size = sizeof(zcsl_bigram_table) + needed * sizeof(uint32_t);
  auto* table = static_cast<zcsl_bigram_table*>(zcsl_memory_alloc(size));
  if (table) table->count = _bigram_fill_table(text, split_words, {table->entries, needed});
  return table;
}

// Only the sorted table can be seen, so that any sort will do.
void _bigram_table_shellsort(bigrams table) {
  std::ranges::sort(table);
}

uint32_t _bigram_compare_tables_sorted(std::span<const uint32_t> a, std::span<const uint32_t> b) {
  uint32_t matches = 0;
  for (size_t i = 0, j = 0; i < a.size() && j < b.size();) {
    if (a[i] == b[j]) {
      ++matches;
      ++i;
      ++j;
    } else if (a[i] < b[j]) {
      ++i;
    } else {
      ++j;
    }
  }
  return matches;
}

// Knuth's multiplicative hashing, down to 6 bits.
uint64_t presence_bit(uint32_t entry) {
  return uint64_t{1} << ((entry * 0x9E3779B1u) >> 26);
}

// Matches one to one, using up the entries of `b`. Most entries of most texts have no match at all;
// a word with a bit for each entry of `b` answers nearly all of those without a search.
uint32_t _bigram_compare_tables_unsorted(bigrams a, bigrams b) {
  uint64_t present = 0;
  for (const uint32_t entry : b) present |= presence_bit(entry);
  bigrams left = b;
  for (const uint32_t entry : a) {
    if (!(present & presence_bit(entry))) continue;
    const auto hit = std::ranges::find(left, entry);
    if (hit == left.end()) continue;
    *hit = left.back();
    left = left.first(left.size() - 1);
  }
  return static_cast<uint32_t>(b.size() - left.size());
}

// One text's entries, in the object itself when the text is short.
class compared_text {
 public:
  bool fill(const char* text, bool split_words) {
    const size_t needed = entries_needed(text);
    if (needed <= s_stack_entries) {
      bigrams_ = {stack_, _bigram_fill_table(text, split_words, {stack_, needed})};
      return true;
    }
    heap_.reset(_bigram_create_table(text, split_words));
    if (!heap_) return false;
    bigrams_ = {heap_->entries, heap_->count};
    return true;
  }
  bool is_short() const { return !heap_; }
  bigrams get() const { return bigrams_; }

 private:
  bigrams bigrams_{};
  zcsl_block_owner<zcsl_bigram_table> heap_;
  uint32_t stack_[s_stack_entries];
};

// Searching is quadratic, which short tables do not mind and long ones do.
uint32_t count_matches(const compared_text& a, const compared_text& b) {
  if (a.is_short() && b.is_short()) return _bigram_compare_tables_unsorted(a.get(), b.get());
  _bigram_table_shellsort(a.get());
  _bigram_table_shellsort(b.get());
  return _bigram_compare_tables_sorted(a.get(), b.get());
}

uint32_t score(uint64_t matches, uint64_t count_a, uint64_t count_b, uint32_t* percent_a,
               uint32_t* percent_b) {
  if (count_a == 0 || count_b == 0) return 0;  // a table of somebody else's making
  zcsl_give(percent_a, static_cast<uint32_t>(matches * 100 / count_a));
  zcsl_give(percent_b, static_cast<uint32_t>(matches * 100 / count_b));
  return static_cast<uint32_t>(matches * 200 / (count_a + count_b));
}

}  // namespace

uint32_t zcsl_string_fuzzycmp_ex(const char* a, const char* b, uint8_t split_words,
                                 uint32_t* percent_a, uint32_t* percent_b) {
  if (!a || !b || *a == 0 || *b == 0) return 0;
  compared_text text_a;
  compared_text text_b;
  if (!text_a.fill(a, split_words) || !text_b.fill(b, split_words)) return 0;
  return score(count_matches(text_a, text_b), text_a.get().size(), text_b.get().size(), percent_a,
               percent_b);
}

zvsdk_status zcsl_string_create_bigram_table(const char* string, uint8_t split_words,
                                             zcsl_bigram_table** table) {
  if (!table) return ZCSL_ERROR(zcsl_package_string, zcsl_code_invalid_arg);
  zcsl_bigram_table* made = _bigram_create_table(string ? string : "", split_words);
  if (!made) return ZCSL_ERROR(zcsl_package_string, zcsl_code_no_memory);
  _bigram_table_shellsort({made->entries, made->count});
  *table = made;
  return 0;
}

uint32_t zcsl_string_bigram_table_cmp_ex(const zcsl_bigram_table* table_a,
                                         const zcsl_bigram_table* table_b, uint32_t* percent_a,
                                         uint32_t* percent_b) {
  if (!table_a || !table_b) return 0;
  const uint32_t matches = _bigram_compare_tables_sorted({table_a->entries, table_a->count},
                                                         {table_b->entries, table_b->count});
  return score(matches, table_a->count, table_b->count, percent_a, percent_b);
}
