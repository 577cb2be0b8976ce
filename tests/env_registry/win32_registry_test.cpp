// The fallback reads only the installation's own key, so the tests write
// there, but only values named QORIN_REG_* and the subkey qorin_test_sub,
// which they remove again; they never expect the key to hold nothing else.
// The tests run in order in one process, the first lookup after the values
// exist; the last one replaces the key under the fallback's handle, and only
// when these tests created the key.
#include <qorin/env.h>
#include <qorin/text.h>

#include "platform/win32_api.h"
#include "support/scoped_environment.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using qorin::testing::thrown_message;

using qorin::RegistryKey;
using qorin::RegistryRoot;

const wchar_t kKeyPath[] = L"SOFTWARE\\Ambrosyn\\Torvo\\4.10\\qoenv";
const std::string kFullPath = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Ambrosyn\\Torvo\\4.10\\qoenv";
const std::string kLongValue = std::string(6000, 'r') + "Gr\xc3\xbc\xc3\x9f" "e \xe2\x9c\x93";

void setValue(HKEY key, const wchar_t* name, DWORD type, const void* data, std::size_t size) {
  ASSERT_EQ(::RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)),
            ERROR_SUCCESS);
}

const std::vector<std::string> kValueNames = {"QORIN_REG_PLAIN", "QORIN_REG_LF",       "QORIN_REG_CR",
                                              "QORIN_REG_LONG",  "QORIN_REG_SHADOWED", "QORIN_REG_EXPAND",
                                              "QORIN_REG_DWORD"};
const wchar_t kSubkey[] = L"qorin_test_sub";

bool keyExists() {
  qorin::win32::UniqueRegKey key;
  return ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKeyPath, 0, KEY_READ, key.out()) == ERROR_SUCCESS;
}

void writeValues(const std::wstring& plain) {
  qorin::win32::UniqueRegKey key;
  qorin::win32::UniqueRegKey sub;
  ASSERT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKeyPath, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.out(), nullptr),
            ERROR_SUCCESS);
  ASSERT_EQ(::RegCreateKeyExW(key.get(), kSubkey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, sub.out(), nullptr),
            ERROR_SUCCESS);
  const std::pair<const wchar_t*, std::wstring> texts[] = {
      {L"QORIN_REG_PLAIN", plain}, {L"QORIN_REG_LF", L"first\nsecond"}, {L"QORIN_REG_CR", L"\rall cut"},
      {L"QORIN_REG_SHADOWED", L"registry"}, {L"QORIN_REG_LONG", std::wstring(6000, L'r') + L"Gr\u00fc\u00dfe \u2713"},
  };
  for (const auto& [name, text] : texts) {
    setValue(key.get(), name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
  }
  setValue(key.get(), L"QORIN_REG_EXPAND", REG_EXPAND_SZ, L"%TEMP%\\x", sizeof L"%TEMP%\\x");
  const DWORD number = 42;
  setValue(key.get(), L"QORIN_REG_DWORD", REG_DWORD, &number, sizeof number);
}

class RegistryTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    createdKey = !keyExists();
    writeValues(L"C:\\data\r\nrest");
  }
  static void TearDownTestSuite() {
    if (createdKey) {
      ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKeyPath);
      return;
    }
    qorin::win32::UniqueRegKey key;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKeyPath, 0, KEY_ALL_ACCESS, key.out()) != ERROR_SUCCESS) return;
    for (const std::string& name : kValueNames) ::RegDeleteValueW(key.get(), qorin::toWString(name).c_str());
    ::RegDeleteTreeW(key.get(), kSubkey);
  }
  static bool createdKey;
};

bool RegistryTest::createdKey = false;

// Whether every one of `wanted` is among `names`.
bool containsAll(std::vector<std::string> names, std::vector<std::string> wanted) {
  std::sort(names.begin(), names.end());
  std::sort(wanted.begin(), wanted.end());
  return std::includes(names.begin(), names.end(), wanted.begin(), wanted.end());
}

TEST_F(RegistryTest, FallbackValuesAreCutAtTheFirstLineBreak) {
  struct Case { const char* name; std::string expected; };
  const Case cases[] = {
      {"QORIN_REG_PLAIN", "C:\\data"}, {"QORIN_REG_LF", "first"}, {"QORIN_REG_CR", ""},
      {"QORIN_REG_LONG", kLongValue},  {"QORIN_REG_DWORD", "*"},  // a DWORD read as text: 42 is '*'
  };
  for (const Case& c : cases) {
    std::string value;
    EXPECT_TRUE(qorin::getenv_from_registry_only(c.name, &value)) << c.name;
    EXPECT_EQ(value, c.expected) << c.name;
  }
  std::string value = "untouched";
  EXPECT_FALSE(qorin::getenv_from_registry_only("QORIN_REG_MISSING", &value));
  EXPECT_EQ(value, "untouched");
}

TEST_F(RegistryTest, EnvironmentTakesPrecedence) {
  {
    qorin::testing::ScopedEnvironmentVariable variable("QORIN_REG_SHADOWED", "environment");
    EXPECT_EQ(qorin::getenv_check_registry_kstring("QORIN_REG_SHADOWED"), "environment");
  }
  // An empty variable counts as absent, so the registry answers.
  qorin::testing::ScopedEnvironmentVariable empty("QORIN_REG_SHADOWED", "");
  EXPECT_EQ(qorin::getenv_check_registry_kstring("QORIN_REG_SHADOWED"), "registry");
  EXPECT_STREQ(qorin::getenv_check_registry_legacy("QORIN_REG_LONG"), kLongValue.c_str());
}

TEST_F(RegistryTest, KeyReadsTypedValuesAndNames) {
  RegistryKey key(RegistryRoot::local_machine, "SOFTWARE\\Ambrosyn\\Torvo\\4.10\\qoenv");
  EXPECT_EQ(key.get_string("QORIN_REG_PLAIN"), "C:\\data\r\nrest");
  EXPECT_EQ(key.get_string("QORIN_REG_LONG"), kLongValue);
  EXPECT_EQ(key.get_string("QORIN_REG_EXPAND"), "%TEMP%\\x");
  EXPECT_EQ(key.get_dword("QORIN_REG_DWORD"), 42u);
  EXPECT_TRUE(containsAll(key.subkey_names(), {"qorin_test_sub"}));
  EXPECT_TRUE(containsAll(key.value_names(), kValueNames));
  EXPECT_FALSE(containsAll(key.value_names(), {"QORIN_REG_MISSING"}));
  RegistryKey moved = std::move(key);
  EXPECT_EQ(moved.full_path(), kFullPath);
  EXPECT_THROW(moved.get_dword("QORIN_REG_PLAIN"), qorin::RegistryError);
  EXPECT_THROW(moved.get_string("QORIN_REG_DWORD"), qorin::RegistryError);
  EXPECT_EQ(thrown_message<qorin::ValueNotFound>([&] { moved.get_dword("QORIN_REG_MISSING"); }),
            "Registry value \"QORIN_REG_MISSING\" not found in " + kFullPath);
  EXPECT_EQ(thrown_message<qorin::KeyNotFound>([] { RegistryKey(RegistryRoot::local_machine, "SOFTWARE\\QorinNope"); }),
            "Registry key not found: HKEY_LOCAL_MACHINE\\SOFTWARE\\QorinNope");
  EXPECT_EQ(thrown_message<qorin::KeyNotFound>([] { RegistryKey(RegistryRoot::current_user, "Software\\QorinNoKey"); }),
            "Registry key not found: HKEY_CURRENT_USER\\Software\\QorinNoKey");
}

// Last: replaces the key under the fallback's open handle.
TEST_F(RegistryTest, FallbackKeyIsOpenedOnce) {
  if (!createdKey) GTEST_SKIP() << "the installation's key existed before: it is not replaced";
  std::string value;
  ASSERT_TRUE(qorin::getenv_from_registry_only("QORIN_REG_PLAIN", &value));
  ASSERT_EQ(::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKeyPath), ERROR_SUCCESS);
  writeValues(L"changed");
  value.clear();
  qorin::getenv_from_registry_only("QORIN_REG_PLAIN", &value);
  EXPECT_NE(value, "changed");
}

}  // namespace
