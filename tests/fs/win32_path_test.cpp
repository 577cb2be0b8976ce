// Path on Windows: backslashes, case-insensitive comparison, drive rules.
#include <qorin/fs.h>

#include "platform/win32_api.h"

#include <gtest/gtest.h>

namespace {

using qorin::Path;

TEST(Win32Path, ConstructionComparisonAndNormalize) {
  EXPECT_EQ(Path("C:/x/y").wstring(), L"C:\\x\\y");
  EXPECT_EQ(Path("C:/x/y").generic(), "C:/x/y");
  EXPECT_EQ(Path("c:\\Data"), Path("C:\\DATA"));
  EXPECT_NE(Path("C:\\data"), Path("C:\\data\\"));
  EXPECT_EQ(Path::compare_filenames(Path("a"), Path("B")), -1);
  EXPECT_TRUE(Path("C:\\data2\\f").starts_with(Path("c:\\data")));
  EXPECT_EQ(Path("a/b/").normalize().string(), "a\\b");
  EXPECT_TRUE(Path("C:\\a").is_absolute());
  EXPECT_FALSE(Path("\\a").is_absolute());
  Path p("C:\\a");
  EXPECT_TRUE(p.equivalent(Path("c:\\A")));  // equal text: the disk is not asked
}

TEST(Win32Path, DecompositionExceptions) {
  struct Case { const char* in; const char* filename; const char* parent; const char* removed; };
  const Case cases[] = {{"C:\\a\\b", "b", "C:\\a", "C:\\a\\"}, {"C:\\a\\", "", "C:\\a", "C:\\a\\"},
                        {"C:\\a.txt", "a.txt", "C:\\", "C:\\"}, {"C:\\", "", "C:\\", "C:\\"},
                        {"C:", "", "C:", "C:"},                  {"a\\..", "", "a", "a\\"}};
  for (const Case& c : cases) {
    EXPECT_EQ(Path(c.in).filename().string(), c.filename) << c.in;
    EXPECT_EQ(Path(c.in).parent_path().string(), c.parent) << c.in;
    EXPECT_EQ(Path(c.in).remove_filename().string(), c.removed) << c.in;
  }
}

TEST(Win32Path, DriveRelativeUsesThatDrivesDirectory) {
  ASSERT_TRUE(::SetEnvironmentVariableW(L"=Q:", L"Q:\\proj"));
  EXPECT_EQ(Path("Q:x").absolute().string(), "Q:\\proj\\x");
  EXPECT_EQ(Path("Q:..\\y").complete_path().string(), "Q:\\y");
  ::SetEnvironmentVariableW(L"=Q:", nullptr);
  EXPECT_EQ(Path("Q:x").absolute().string(), "Q:\\x");
  bool made = false;
  EXPECT_EQ(Path::make_relative_path(Path("C:\\a\\b\\c"), Path("C:\\a\\x"), &made, 1).string(), "..\\b\\c");
  EXPECT_TRUE(made);
}

TEST(Win32Path, SimplifyKeepsRootSeparator) {
  EXPECT_EQ(qorin::simplify_path("C:/"), "C:\\");
  EXPECT_EQ(qorin::simplify_path("C:/a/b/"), "C:\\a\\b");
  EXPECT_EQ(qorin::get_directory_from_file("C:/w/a/f.txt"), "C:\\w\\a");
}

}  // namespace
