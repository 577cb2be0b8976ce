#include <qorin/debug.h>
#include <qorin/env.h>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(RegistryKey, NoRegistryMeansEveryKeyIsMissing) {
  const std::string message =
      "Registry key not found: HKEY_CURRENT_USER\\Software\\Torvo (there is no registry on this platform)";
  try {
    try {
      qorin::RegistryKey key(qorin::RegistryRoot::current_user, "Software\\Torvo");
      FAIL() << "opened";
    } catch (const qorin::KeyNotFound& e) {
      EXPECT_EQ(e.what(), message);
      qorin::rethrowMessage("Reading settings");
    }
  } catch (const qorin::RegistryError& e) {
    // Same object, context added through its MoreInfoForException base.
    EXPECT_NE(dynamic_cast<const qorin::KeyNotFound*>(&e), nullptr);
    EXPECT_EQ(e.fullMessage(), "Reading settings: " + message);
  }
}

}  // namespace
