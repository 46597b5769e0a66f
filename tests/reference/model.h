/*
 * model.h: a slow and plain reading of what a statement means, over tracks in standard containers:
 * the scores, the literal steps of a PER limit with its shuffle, and the sort that fixes how ties
 * fall. It shares no code with the library.
 */
#ifndef REFERENCE_MODEL_H
#define REFERENCE_MODEL_H

#include <map>

#include "tests/reference/statement.h"

namespace reference {

struct track {
  std::string ident;
  std::vector<uint32_t> tempos;
  std::vector<std::string> texts[4]; /* by attribute; none for the tempo */
};

using library = std::vector<track>;

/* "ident:score ident:score ..." for a statement over libraries in order. `seed` is the state of the
 * generator. The statement's own generators move on. */
std::string run(statement& of, const std::vector<library>& libraries, uint32_t seed);

}  // namespace reference

#endif
