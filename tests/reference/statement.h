/*
 * statement.h: statements as trees of the reference's own, made at random and printed as text.
 * There is no parser here: a tree is what its text must mean.
 */
#ifndef REFERENCE_STATEMENT_H
#define REFERENCE_STATEMENT_H

#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace reference {

enum attribute { tempo, artist, album, title };

/* One condition or score: what `kind` says uses the fields behind it. */
struct expression {
  enum kind_of { compare, reversed, in_list, score_compare, logic, arithmetic, number, random };
  kind_of kind = number;
  attribute of = tempo;
  std::string op;               /* = != < <= > >= LIKE BEGINS CONTAINS AND OR + - * / */
  std::string text;             /* the criterion as it is written */
  int32_t value = 0;            /* a number; the maximum of a RAND */
  std::vector<uint32_t> list;   /* of IN */
  std::optional<uint32_t> seed; /* of a RAND that has its own; then its generator's state */
  std::unique_ptr<expression> left, right;
};
using expression_ptr = std::unique_ptr<expression>;

struct limit {
  uint32_t count;
  std::optional<attribute> per;
};

struct statement {
  expression_ptr where, order;
  std::vector<limit> limits;
  std::string text;
};

/* A random statement. */
statement make_statement(std::mt19937& random);

/* The names that statements and tracks are made of. */
const std::vector<std::string>& names();

}  // namespace reference

#endif
