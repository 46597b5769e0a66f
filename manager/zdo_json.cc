// Data objects from a JSON document.

#include "manager/json_document.h"
#include "manager/zdo_builder.h"

namespace manager {
namespace {

using kind = json_value::type;

/* Where a value stands. Spelled out only when something is refused: a document of many values below
 * long keys would cost its square otherwise. */
struct place {
  const place* outer;
  std::string_view name;

  std::string spelled() const {
    std::string text(name);
    for (const place* each = outer; each != nullptr; each = each->outer) {
      text.insert(0, ".").insert(0, each->name);
    }
    return text;
  }
};

[[noreturn]] void refuse(const place& where, const std::string& what) {
  refuse_document(where.spelled() + ": " + what);
}

class json_objects {
 public:
  explicit json_objects(zdo_pool& pool) : pool_(pool) {}

  /* Nesting is bounded by the document's. */
  zdo_node* build(const json_value& object, const place& path) {
    if (!object.is(kind::object)) refuse(path, "an object was expected");
    const json_value* context = object.find("context");
    if (context == nullptr || !context->is(kind::text) || context->text.empty()) {
      refuse(path, "\"context\" must be a text");
    }
    zdo_builder builder(pool_, 1, 0);
    zdo_node* node = builder.add_root(builder.cluster().copy(context->text.c_str()), 0);
    for (const auto& [name, value] : object.members) {
      if (name == "values") {
        add_values(*node, value, {&path, name});
      } else if (name == "children") {
        add_children(*node, value, {&path, name});
      } else if (name != "context") {
        refuse(path, "\"" + name + "\" is not known here");
      }
    }
    return builder.finish();
  }

 private:
  /* Calls `add` for each item of each key: an item alone is an array of one. */
  template <class Add>
  static void each_item(zdo_node& node, const json_value& keyed, const place& path, Add add) {
    if (!keyed.is(kind::object)) refuse(path, "an object was expected");
    for (const auto& [name, value] : keyed.members) {
      if (name.empty()) refuse(path, "a key is empty");
      const char* key = node.cluster().copy(name.c_str());
      const place here{&path, name};
      if (!value.is(kind::array)) {
        add(key, value, here);
        continue;
      }
      for (const json_value& item : value.items) add(key, item, here);
    }
  }

  static void add_values(zdo_node& node, const json_value& values, const place& path) {
    each_item(node, values, path, [&](const char* key, const json_value& item, const place& here) {
      if (!item.is(kind::text) && !item.is(kind::integer)) {
        refuse(here, "a text was expected");
      }
      node.add_value(key, node.cluster().copy(item.text.c_str()), zdo_key_order::grouped);
    });
  }

  void add_children(zdo_node& node, const json_value& children, const place& path) {
    each_item(node, children, path,
              [&](const char* key, const json_value& item, const place& here) {
                const held_node child{pool_, build(item, here)};
                node.add_child(key, child.node, zdo_key_order::grouped);
              });
  }

  struct held_node {
    zdo_pool& pool;
    zdo_node* node;
    ~held_node() { pool.release(node); }
  };

  zdo_pool& pool_;
};

}  // namespace

zdo_node* zdo_from_json(zdo_pool& pool, const char* json) {
  return json_objects(pool).build(json_value::parse(json), {nullptr, "document"});
}

}  // namespace manager
