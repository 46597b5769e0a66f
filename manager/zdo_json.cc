// Data objects from a JSON document.

#include "manager/json_document.h"
#include "manager/zdo_builder.h"

namespace manager {
namespace {

using kind = json_value::type;

class json_objects {
 public:
  explicit json_objects(zdo_pool& pool) : m_pool(pool) {}

  /* Nesting is bounded by the document's. */
  zdo_node* build(const json_value& object, const std::string& path) {
    if (!object.is(kind::object)) refuse(path, "an object was expected");
    const json_value* context = object.find("context");
    if (context == nullptr || !context->is(kind::text) || context->text.empty()) {
      refuse(path, "\"context\" must be a text");
    }
    zdo_builder builder(m_pool, 1, 0);
    zdo_node* node = builder.add_root(builder.cluster().copy(context->text.c_str()), 0);
    for (const auto& [name, value] : object.members) {
      if (name == "values") {
        add_values(*node, value, path + ".values");
      } else if (name == "children") {
        add_children(*node, value, path + ".children");
      } else if (name != "context") {
        refuse(path, "\"" + name + "\" is not known here");
      }
    }
    return builder.finish();
  }

 private:
  [[noreturn]] static void refuse(const std::string& path, const std::string& what) {
    refuse_document(path + ": " + what);
  }

  /* Calls `add` for each item of each key: an item alone is an array of one. */
  template <class Add>
  static void each_item(zdo_node& node, const json_value& keyed, const std::string& path, Add add) {
    if (!keyed.is(kind::object)) refuse(path, "an object was expected");
    for (const auto& [name, value] : keyed.members) {
      if (name.empty()) refuse(path, "a key is empty");
      const char* key = node.cluster().copy(name.c_str());
      std::string place = path;
      place.append(".").append(name);
      if (!value.is(kind::array)) {
        add(key, value, place);
        continue;
      }
      for (const json_value& item : value.items) add(key, item, place);
    }
  }

  static void add_values(zdo_node& node, const json_value& values, const std::string& path) {
    each_item(node, values, path,
              [&](const char* key, const json_value& item, const std::string& place) {
                if (!item.is(kind::text) && !item.is(kind::integer)) {
                  refuse(place, "a text was expected");
                }
                node.add_value(key, node.cluster().copy(item.text.c_str()));
              });
  }

  void add_children(zdo_node& node, const json_value& children, const std::string& path) {
    each_item(node, children, path,
              [&](const char* key, const json_value& item, const std::string& place) {
                const held_node child{m_pool, build(item, place)};
                node.add_child(key, child.node);
              });
  }

  struct held_node {
    zdo_pool& pool;
    zdo_node* node;
    ~held_node() { pool.release(node); }
  };

  zdo_pool& m_pool;
};

}  // namespace

zdo_node* zdo_from_json(zdo_pool& pool, const char* json) {
  return json_objects(pool).build(json_value::parse(json), "document");
}

}  // namespace manager
