// statement_seed.h: whether a statement asks to come out the same on every run, and what it asks
// without its limits.
#ifndef ZVPLAYLIST_STATEMENT_SEED_H
#define ZVPLAYLIST_STATEMENT_SEED_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace zvplaylist {

// The number of the first RAND(max, number) outside quotes. The library draws the choice that a PER
// limit makes from elsewhere; who gives a RAND its number means the whole playlist.
std::optional<uint32_t> seed_in_statement(std::string_view statement);
// A statement that the library understands, up to its LIMIT.
std::string_view without_limits(std::string_view statement);

}  // namespace zvplaylist

#endif
