#include <qorin/debug.h>
#include <qorin/env.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

TEST(RegistryKey, NoRegistryMeansEveryKeyIsMissing) {
  try {
    try {
      qorin::RegistryKey key(qorin::RegistryRoot::current_user, "Software\\Torvo");
      FAIL() << "opened";
    } catch (const qorin::KeyNotFound& e) {
      EXPECT_STREQ(e.what(),
                   "Registry key not found: HKEY_CURRENT_USER\\Software\\Torvo (there is no registry on this platform)");
      qorin::rethrowMessage("Reading settings");
    }
  } catch (const qorin::RegistryError& e) {
    // Same object, context added through its MoreInfoForException base.
    EXPECT_NE(dynamic_cast<const qorin::KeyNotFound*>(&e), nullptr);
    EXPECT_EQ(e.fullMessage(),
              "Reading settings: Registry key not found: HKEY_CURRENT_USER\\Software\\Torvo "
              "(there is no registry on this platform)");
  }
}

}  // namespace
