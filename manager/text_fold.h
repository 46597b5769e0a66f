/*
 * text_fold.h: a text with the case of its letters removed, for lookups that do not regard case.
 * Covers ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic letters; other bytes stay as they
 * are.
 */
#ifndef TEXT_FOLD_H
#define TEXT_FOLD_H

#include <string>
#include <string_view>

namespace manager {

std::string fold_case(std::string_view text);

}  // namespace manager

#endif
