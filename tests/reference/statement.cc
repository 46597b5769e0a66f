// Random statements and their text.
#include "tests/reference/reference.h"

#include <cctype>

namespace reference {
namespace {

// Leaves bind closest.
int looseness(const expression& of) {
  const bool sum = of.op == "+" || of.op == "-";
  return of.left == nullptr ? 0 : of.kind == expression::logic || sum ? 2 : 1;
}

struct maker {
  std::mt19937& random;

  statement make() {
    statement made;
    made.text = one_of({"GENPL", "generate playlist", "GenE  Pl"});
    if (chance(80)) {
      made.where = where(3);
      made.text += one_of({" WHERE ", " w "}) + made.where->shown;
    }
    if (chance(60)) {
      made.order = order();
      made.text += one_of({" ORDER ", " Order BY "}) + made.order->shown;
    }
    // At most one is of a count; it comes first, to be carried out last.
    for (uint32_t i = below(4); i > 0; --i) {
      std::optional<attribute> per;
      if (!made.limits.empty() || chance(40)) per = any_attribute();
      made.limits.push_back({per, below(4) * 3 + i - 1});
      made.text += (made.limits.size() == 1 ? " LIMIT " : ", ") +
                   std::to_string(made.limits.back().second) +
                   (per ? std::string(" PER ") + rules[*per].name : one_of({" RESULTS", " re"}));
    }
    return made;
  }

  uint32_t below(uint32_t end) { return random() % end; }
  bool chance(uint32_t percent) { return below(100) < percent; }
  std::string one_of(const texts& choices) {
    return choices[below(static_cast<uint32_t>(choices.size()))];
  }
  attribute any_attribute() { return static_cast<attribute>(below(attribute_count)); }
  static expression_ptr node(expression made) {
    return std::make_unique<expression>(std::move(made));
  }
  static expression_ptr number(int32_t value) {
    return node({.kind = expression::number, .shown = std::to_string(value), .value = value});
  }
  // All operators bind to the right. Parentheses stand where that is not meant, and elsewhere too.
  expression_ptr join(expression::kind_of kind, const std::string& op, expression_ptr left,
                      expression_ptr right) {
    expression made = {kind, "", op, std::move(left), std::move(right)};
    const int own = looseness(made);
    const auto operand = [&](const expression& inner, int bound) {
      const bool bare = looseness(inner) == 0 || (looseness(inner) < bound && chance(60));
      return bare ? inner.shown : "( " + inner.shown + ")";
    };
    made.shown = operand(*made.left, own) + " " + (op == "=" ? one_of({"=", "=="}) : op) + " " +
                 operand(*made.right, own + 1);
    return node(std::move(made));
  }
  expression_ptr comparison(bool may_list = false) {
    expression_ptr made = node({chance(5) ? expression::reversed : expression::compare, ""});
    const attribute of = made->of = any_attribute();
    const bool spans = of == era || of == tempo, reversed = made->kind == expression::reversed;
    const bool lists = may_list && !reversed && !is_text(of) && chance(20);
    made->op = lists ? "IN"
                     : one_of(is_text(of) ? texts{"=", "!=", "LIKE", "BEGINS", "CONTAINS"}
                              : spans     ? texts{"LIKE", "LIKE", "<", "<=", ">", ">=", "=", "!="}
                                          : texts{"LIKE", "LIKE", "=", "!="});
    std::string text = chance(40) ? "SEED" : one_of(words[!is_text(of)]);
    if (is_text(of) && text != "SEED" && chance(50))
      text.resize(std::min<size_t>(text.size(), 1 + below(5)));
    if (lists) text = ",";
    for (uint32_t i = lists ? below(5) : 0; i > 0; --i)
      text += words[!is_text(of)][below(held_words[!is_text(of)])] + ",";
    made->text = text;
    const bool bare = text == "SEED" || (std::isdigit(text[0]) && !reversed && chance(80));
    if (lists)
      text = "[" + text.substr(1) + "]";
    else if (const std::string quote = one_of({"'", "\""}); !bare)
      text = quote + text + quote;
    const std::string name = rules[of].name, op = made->op == "LIKE" && chance(50) ? "l" : made->op;
    made->shown = reversed ? text + " " + op + " " + name : name + " " + op + " " + text;
    return made;
  }

  expression_ptr where(uint32_t depth) {
    if (depth > 0 && chance(60))
      return join(expression::logic, one_of({"AND", "OR"}), where(depth - 1), where(depth - 1));
    if (chance(70)) return comparison(true);
    expression_ptr left = comparison();
    if (chance(10)) left = join(expression::score_compare, ">", std::move(left), number(0));
    return join(expression::score_compare, one_of({"=", "!=", "<", "<=", ">", ">="}),
                std::move(left),
                chance(70) ? number(static_cast<int32_t>(below(40)) * 60 - 1200) : comparison());
  }

  // sum := product [ (+|-) sum ], product := term [ (*|/) product ]: all bind to the right.
  expression_ptr chain(const texts& operators, bool products, uint32_t depth) {
    expression_ptr left = products ? term(depth) : chain({"*", "/"}, true, depth);
    if (!chance(40)) return left;
    return join(expression::arithmetic, one_of(operators), std::move(left),
                chain(operators, products, depth));
  }
  expression_ptr term(uint32_t depth) {
    const uint32_t which = below(depth > 0 ? 4 : 3);
    if (which == 0) return number(static_cast<int32_t>(random()) >> below(32));
    if (which == 1) return comparison(true);
    if (which == 3) return chain({"+", "-"}, false, depth - 1);
    expression_ptr made = node({expression::random, one_of({"RAND(", "- rand ("})});
    made->value = static_cast<int32_t>(below(50)) - 5;
    if (chance(60)) made->seed = below(4);
    made->shown +=
        std::to_string(made->value) + (made->seed ? "," + std::to_string(*made->seed) : "") + ")";
    return made;
  }
  // A bare number is no expression.
  expression_ptr order() {
    expression_ptr made = chain({"+", "-"}, false, 2);
    return made->kind == expression::number ? order() : std::move(made);
  }
};

}  // namespace

statement make_statement(std::mt19937& random) {
  return maker{random}.make();
}

}  // namespace reference
