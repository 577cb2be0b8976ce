#include <qorin/env.h>

#include <gtest/gtest.h>

namespace {

TEST(ProductIdentity, DefaultsUntilTheHostRenames) {
  EXPECT_EQ(qorin::get_product_version(), "4.10");
  EXPECT_EQ(qorin::get_product_name(), "Torvo");
  qorin::initialize_product_and_ver("Demo", "1.5");
  EXPECT_EQ(qorin::get_product_name(), "Demo");
  EXPECT_EQ(qorin::get_product_version(), "1.5");
  // An emptied version is filled again, and so is the name with it.
  qorin::initialize_product_and_ver("Demo", "");
  EXPECT_EQ(qorin::get_product_version(), "4.10");
  EXPECT_EQ(qorin::get_product_name(), "Torvo");
}

TEST(ProductIdentity, ToolkitMarkIsSetOnce) {
  EXPECT_FALSE(qorin::is_qt_app_name_marked_as_initialized());
  qorin::mark_qt_app_name_as_initialized();
  qorin::mark_qt_app_name_as_initialized();
  EXPECT_TRUE(qorin::is_qt_app_name_marked_as_initialized());
}

}  // namespace
