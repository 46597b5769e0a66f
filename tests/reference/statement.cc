// Random statements and their text.
#include "tests/reference/statement.h"

#include <cctype>

namespace reference {
namespace {

class maker {
 public:
  explicit maker(std::mt19937& random) : m_random(random) {}

  statement make() {
    statement made;
    made.text = one_of({"GENPL", "generate playlist", "GenE  Pl"});
    if (chance(80)) {
      made.where = where(3);
      made.text += one_of({" WHERE ", " w "}) + print(*made.where);
    }
    if (chance(60)) {
      made.order = order();
      made.text += one_of({" ORDER ", " Order BY "}) + print(*made.order);
    }
    for (uint32_t i = below(4); i > 0; --i) {
      made.text += made.limits.empty() ? " LIMIT " : ", ";
      made.limits.push_back({below(12), std::nullopt});
      made.text += std::to_string(made.limits.back().count);
      if (chance(60)) {
        made.limits.back().per = static_cast<attribute>(below(4));
        made.text += " PER " + name_of(*made.limits.back().per);
      } else {
        made.text += one_of({" RESULTS", " re"});
      }
    }
    return made;
  }

 private:
  uint32_t below(uint32_t end) { return m_random() % end; }
  bool chance(uint32_t percent) { return below(100) < percent; }
  std::string one_of(std::vector<std::string> choices) {
    return choices[below(static_cast<uint32_t>(choices.size()))];
  }

  std::string name_of(attribute of) {
    static const char* const all[] = {"ZV_Tempo", "ZV_ArtistName", "ZV_AlbumName", "ZV_TrackName"};
    std::string name = all[of];
    if (chance(20))
      for (char& c : name) c = static_cast<char>(std::tolower(c));
    return name;
  }

  expression_ptr node(expression::kind_of kind, std::string op = "") {
    auto made = std::make_unique<expression>();
    made->kind = kind;
    made->op = std::move(op);
    return made;
  }
  expression_ptr joined(expression::kind_of kind, std::string op, expression_ptr left,
                        expression_ptr right) {
    expression_ptr made = node(kind, std::move(op));
    made->left = std::move(left);
    made->right = std::move(right);
    return made;
  }
  expression_ptr number(int32_t value) {
    expression_ptr made = node(expression::number);
    made->value = value;
    return made;
  }

  // A comparison of an attribute, or a list of tempos.
  expression_ptr leaf() {
    if (chance(10)) {
      expression_ptr made = node(expression::in_list, one_of({"IN", "i"}));
      for (uint32_t i = below(5); i > 0; --i) made->list.push_back(below(10) * 20);
      return made;
    }
    expression_ptr made = node(chance(5) ? expression::reversed : expression::compare);
    made->of = chance(50) ? tempo : static_cast<attribute>(1 + below(3));
    if (made->of == tempo) {
      made->op = one_of({"=", "!=", "<", "<=", ">", ">=", "LIKE"});
      made->text = std::to_string(1 + below(20) * 10);
    } else {
      made->op = one_of({"=", "!=", "BEGINS", "CONTAINS"});
      made->text = names()[below(static_cast<uint32_t>(names().size()))];
      if (chance(50)) made->text = made->text.substr(0, 1 + below(5));
      if (made->text.back() == '\xC3') made->text.pop_back();
    }
    return made;
  }

  expression_ptr where(uint32_t depth) {
    if (depth > 0 && chance(60))
      return joined(expression::logic, one_of({"AND", "OR"}), where(depth - 1), where(depth - 1));
    if (chance(70)) return leaf();
    expression_ptr left = chance(80) ? leaf() : where(0);
    while (left->kind == expression::in_list) left = leaf();
    const bool against_number = chance(70);
    expression_ptr right =
        against_number ? number(static_cast<int32_t>(below(40)) * 60 - 1200) : leaf();
    while (right->kind == expression::in_list) right = leaf();
    return joined(expression::score_compare, one_of({"=", "!=", "<", "<=", ">", ">="}),
                  std::move(left), std::move(right));
  }

  // sum := product [ (+|-) sum ], product := term [ (*|/) product ]: all bind to the right.
  expression_ptr chain(const std::vector<std::string>& operators, bool products, uint32_t depth) {
    expression_ptr left = products ? term(depth) : chain({"*", "/"}, true, depth);
    if (!chance(40)) return left;
    return joined(expression::arithmetic, one_of(operators), std::move(left),
                  chain(operators, products, depth));
  }
  expression_ptr term(uint32_t depth) {
    switch (below(depth > 0 ? 4 : 3)) {
      case 0:
        return number(static_cast<int32_t>(m_random()) >> below(32));
      case 1: {
        expression_ptr made = node(expression::random);
        made->value = static_cast<int32_t>(below(50)) - 5;
        if (chance(60)) made->seed = below(4);
        return made;
      }
      case 2:
        return leaf();
      default:
        return chain({"+", "-"}, false, depth - 1);
    }
  }
  expression_ptr order() {
    expression_ptr made = chain({"+", "-"}, false, 2);
    if (made->kind != expression::number) return made;  // a bare number is no expression
    return joined(expression::arithmetic, "*", std::move(made), leaf());
  }

  std::string criterion(const expression& of) {
    if (of.of == tempo && of.kind == expression::compare && chance(80)) return of.text;
    return chance(50) ? "'" + of.text + "'" : "\"" + of.text + "\"";
  }
  std::string op_of(const expression& of) {
    if (of.op == "=") return one_of({"=", "=="});
    return of.op == "LIKE" ? one_of({"LIKE", "l"}) : of.op;
  }
  std::string in_parentheses(const expression& of) { return "( " + print(of) + ")"; }

  // Left operands need their parentheses where the text would bind otherwise, right ones do not.
  std::string operand(const expression& left, const expression& of) {
    const bool loose = left.kind == expression::logic || left.kind == expression::score_compare ||
                       left.kind == expression::arithmetic;
    const bool product_of_sum = left.kind == expression::arithmetic &&
                                (left.op == "*" || left.op == "/") &&
                                (of.op == "+" || of.op == "-");
    const bool compared = of.kind == expression::logic && left.kind == expression::score_compare;
    if (product_of_sum || compared) return chance(50) ? print(left) : in_parentheses(left);
    return loose ? in_parentheses(left) : print(left);
  }
  std::string right_operand(const expression& right, const expression& of) {
    if (of.kind == expression::score_compare) return print(right);
    const bool sum_in_product = right.kind == expression::arithmetic &&
                                (right.op == "+" || right.op == "-") &&
                                (of.op == "*" || of.op == "/");
    const bool groups = right.kind == expression::logic || right.kind == expression::arithmetic;
    return sum_in_product || (groups && chance(30)) ? in_parentheses(right) : print(right);
  }

  std::string print(const expression& of) {
    switch (of.kind) {
      case expression::number:
        return std::to_string(of.value);
      case expression::random:
        return one_of({"RAND(", "- rand ("}) + std::to_string(of.value) +
               (of.seed ? "," + std::to_string(*of.seed) : "") + ")";
      case expression::compare:
        return name_of(of.of) + " " + op_of(of) + " " + criterion(of);
      case expression::reversed:
        return criterion(of) + " " + of.op + " " + name_of(of.of);
      case expression::in_list: {
        std::string text = name_of(of.of) + " " + of.op + " [";
        for (uint32_t value : of.list) text += std::to_string(value) + ",";
        return text + "]";
      }
      default:
        return operand(*of.left, of) + " " + op_of(of) + " " + right_operand(*of.right, of);
    }
  }

  std::mt19937& m_random;
};

}  // namespace

statement make_statement(std::mt19937& random) {
  return maker(random).make();
}

const std::vector<std::string>& names() {
  static const std::vector<std::string> all = {"Abba",  "abb",   "Abbey Road", "b",
                                               "Bb",    "abc",   "abd",        "ABD",
                                               "Cabba", "Roads", "road",       "C\xC3\xA9line"};
  return all;
}

}  // namespace reference
