/*
 * zcsl_fuzzy.h: similarity of two texts, 0 to 100: the Dice coefficient over their bigrams, case
 * folded, with half-bigrams where a word opens and closes. "abc" against "abd" is 50.
 *
 * A text of n characters has n + 1 bigrams. Texts under 200 bytes are compared without allocating.
 * With `split_words` each run of white space parts two words; without it, spaces are ordinary
 * characters. A text is taken as far as it decodes. All functions are reentrant.
 */
#ifndef ZCSL_FUZZY_H
#define ZCSL_FUZZY_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The sorted bigrams of one text. One block, released with zcsl_memory_free. */
typedef struct zcsl_bigram_table zcsl_bigram_table;

/*
 * The score. The optional outputs receive the share of each text's own bigrams that match. With a
 * null or empty text, or without memory, the score is 0 and the outputs are not written. Texts of
 * 4 GiB and more count as lack of memory.
 */
ZVSDK_API uint32_t zcsl_string_fuzzycmp_ex(const char* a, const char* b, uint8_t split_words,
                                           uint32_t* percent_a, uint32_t* percent_b);
/* Null output: 0x90050001. No memory: 0x90050002. A null text gives a table like that of "". */
ZVSDK_API zvsdk_status zcsl_string_create_bigram_table(const char* string, uint8_t split_words,
                                                       zcsl_bigram_table** table);
/* The same score from two tables. Either null gives 0 with the outputs unwritten. */
ZVSDK_API uint32_t zcsl_string_bigram_table_cmp_ex(const zcsl_bigram_table* table_a,
                                                   const zcsl_bigram_table* table_b,
                                                   uint32_t* percent_a, uint32_t* percent_b);

#ifdef __cplusplus
}
#endif

#endif
