// Data objects as trees in memory, built by calls and from JSON.

#include <thread>

#include "tests/manager/zdo_fixture.h"

namespace {

zvsdk_status add_child(const zdo_ptr& to, const zdo_ptr& child) {
  return low_word(zvsdk_manager_zdo_child_add(to.get(), "k", child.get()));
}

TEST_F(zdo_test, a_child_lives_as_long_as_its_parent_or_its_own_handle) {
  zvsdk_zdo* inner = nullptr;
  {
    const zdo_ptr root = make_object("root");
    {
      const zdo_ptr leaf = make_object("leaf");
      ASSERT_EQ(0u, add_child(root, leaf));
      inner = leaf.get();
    }
    EXPECT_NE(0u, host.handles->handle_validate_zdo(inner)) << "the handle was given back";
    EXPECT_EQ(1u, low_word(zvsdk_manager_zdo_release(inner)));
    inner = child(root, "k").release();
    ASSERT_EQ(0u, host.objects->zdo_addref(inner));
  }
  EXPECT_EQ(0u, host.objects->zdo_release(inner));
  EXPECT_EQ("leaf", context(zdo_ptr(inner))) << "held by its own handle";
  EXPECT_NE(0u, host.handles->handle_validate_zdo(inner));
}

TEST_F(zdo_test, circles_are_refused) {
  const zdo_ptr a = make_object("a"), b = make_object("b"), c = make_object("c");
  EXPECT_EQ(0u, add_child(a, b));
  EXPECT_EQ(0u, add_child(b, c));
  EXPECT_EQ(0u, add_child(a, c)) << "two ways are no circle";
  EXPECT_EQ(1u, add_child(c, a));
  EXPECT_EQ(1u, add_child(c, c));
  EXPECT_EQ(nullptr, child(c, "k"));
}

TEST_F(zdo_test, a_chain_of_any_length_is_built_and_freed) {
  zdo_ptr top = make_object("link");
  for (int i = 0; i < 200000; ++i) top = make_object("link", {}, {{"next", top}});
  EXPECT_EQ("link", context(child(child(top, "next"), "next")));
}

TEST_F(zdo_test, a_json_document_becomes_a_tree) {
  const zdo_ptr album(output_of(
      zvsdk_manager_zdo_from_json,
      R"({"context": "zvsdk_ctx_album", "values": {"zvsdk_val_year": 1999, "m": ["a", "b"]},
      "children": {"title": {"context": "t", "values": {"text": "Gr\u00fcn \"1\""}},
                   "track": [{"context": "t"}, {"context": "u", "values": {"ident": "2"}}]}})"));
  EXPECT_EQ("1999", value(album, "zvsdk_val_year"));
  EXPECT_EQ("b", value(album, "m", 2));
  EXPECT_EQ("Grün \"1\"", value(album, "title/text"));
  EXPECT_EQ("2", value(child(album, "track", 2), "ident"));
}

TEST_F(zdo_test, a_bad_json_document_is_refused_with_a_message) {
  std::string deep = "{}";
  for (int i = 0; i < 60; ++i) deep = R"({"context": "c", "children": {"k": )" + deep + "}}";
  const std::pair<std::string, const char*> cases[] = {
      {"[]", "document: an object was expected"},
      {"{\"context\"", "line 1"},
      {"{}", "\"context\" must be a text"},
      {R"({"context": "c", "value": {}})", "\"value\" is not known here"},
      {R"({"context": "c", "values": {"": "x"}})", "a key is empty"},
      {R"({"context": "c", "values": {"k": [true]}})", "document.values.k: a text was expected"},
      {R"({"context": "c", "values": {"k": "1", "k": "2"}})", "given twice"},
      {R"({"context": "c", "children": {"k": [{"context": "d"}, {"context": 4}]}})",
       "document.children.k: \"context\""},
      {"{\"context\": \"c\xFF\"}", "UTF-8"},
      {R"({"context": "c", "values": {"a\u0000x": "1"}})", "U+0000"},
      {deep, "deep"},
      {std::string(1000000, '['), "deep"},
  };
  for (const auto& [json, message] : cases) {
    zvsdk_zdo* made = nullptr;
    EXPECT_EQ(0x0Cu, low_word(zvsdk_manager_zdo_from_json(json.c_str(), &made)));
    EXPECT_TRUE(has(last_error().message, message));
    EXPECT_EQ(nullptr, made);
  }
}

/* Parts of one tree stay while any part is held, and threads may hold and drop them at once. */
TEST_F(zdo_test, parts_of_a_tree_are_held_by_several_threads) {
  const zdo_ptr leaf = make_object("c", {{"v", "A"}});
  for (int round = 0; round < 200; ++round) {
    const zdo_ptr middle = make_object("b", {}, {{"leaf", leaf}});
    zdo_ptr tree = make_object("a", {}, {{"middle", middle}});
    std::vector<std::jthread> threads;
    for (int i = 0; i < 3; ++i) {
      ASSERT_EQ(0u, host.objects->zdo_addref(tree.get()));
      threads.emplace_back([&, own = zdo_ptr(tree.get())]() mutable {
        EXPECT_EQ("A", value(child(child(zdo_ptr(std::move(own)), "middle"), "leaf"), "v"));
      });
    }
    tree.reset();
  }
}

}  // namespace
