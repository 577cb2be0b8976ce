// Path on Windows: backslashes, case-insensitive comparison, drive rules.
#include <qorin/fs.h>

#include "platform/win32_api.h"

#include <gtest/gtest.h>

#include <cctype>

#include <fcntl.h>
#include <io.h>

#include <utf8.h>

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

// The runtime's own path has no UNC or device roots; Path must.
TEST(Win32Path, ServerAndDeviceRoots) {
  struct Case { const char* in; const char* root_name; const char* root_directory; const char* relative; bool absolute; };
  const Case cases[] = {{"\\\\srv\\share\\f", "\\\\srv", "\\", "share\\f", true},
                        {"\\\\?\\C:\\a", "\\\\?", "\\", "C:\\a", true},
                        {"\\\\.\\pipe\\p", "\\\\.", "\\", "pipe\\p", true},
                        {"C:x", "C:", "", "x", false},
                        {"\\x", "", "\\", "x", false}};
  for (const Case& c : cases) {
    const Path p(c.in);
    EXPECT_EQ(p.root_name().string(), c.root_name) << c.in;
    EXPECT_EQ(p.root_directory().string(), c.root_directory) << c.in;
    EXPECT_EQ(p.root_path().string(), std::string(c.root_name) + c.root_directory) << c.in;
    EXPECT_EQ(p.relative_path().string(), c.relative) << c.in;
    EXPECT_EQ(p.is_absolute(), c.absolute) << c.in;
    EXPECT_EQ(p.has_root_name(), *c.root_name != '\0') << c.in;
    if (c.absolute) EXPECT_EQ(p.complete_path().string(), c.in);  // completes to itself
  }
  EXPECT_EQ((Path("C:\\x") /= Path("\\\\srv\\s")).string(), "\\\\srv\\s");
  EXPECT_EQ((Path("\\\\srv\\s\\x") /= Path("y")).string(), "\\\\srv\\s\\x\\y");
  EXPECT_EQ((Path("C:\\x") /= Path("\\y")).string(), "C:\\y");
  EXPECT_EQ((Path("C:") /= Path("y")).string(), "C:y");
  EXPECT_EQ((Path("C:\\x") /= Path("D:y")).string(), "D:y");
  EXPECT_EQ(Path("C:\\w").resolve_path(Path("\\\\srv\\s\\..\\t")).string(), "\\\\srv\\t");
  bool made = true;
  EXPECT_EQ(Path::make_relative_path(Path("\\\\srv\\s1\\a"), Path("\\\\srv\\s2\\b"), &made, 9).string(),
            "\\\\srv\\s1\\a");
  EXPECT_FALSE(made);
}

// "C:x" on the current drive is the current directory's x, whether or not
// the shell left "=C:" behind.
TEST(Win32Path, DriveRelativeOnTheCurrentDrive) {
  const Path cwd = Path::current_path();
  const std::string drive = cwd.root_name().string();
  ASSERT_EQ(drive.size(), 2u) << cwd.string();
  const std::wstring variable = L"=" + cwd.root_name().wstring();
  std::wstring saved(10000, L'\0');
  const DWORD length = ::GetEnvironmentVariableW(variable.c_str(), saved.data(), 10000);
  ASSERT_TRUE(::SetEnvironmentVariableW(variable.c_str(), nullptr));
  EXPECT_EQ(Path(drive + "x").absolute(), Path(cwd) /= Path("x"));
  if (length > 0) ::SetEnvironmentVariableW(variable.c_str(), saved.c_str());
}

// A child process must not inherit the library's files.
TEST(Win32Path, FilesAreNotInherited) {
  qorin::TemporaryDirectory dir("qorin-noinherit");
  const Path file = Path(dir.path()) /= Path("f");
  auto inherited = [](int fd) {
    DWORD flags = 0;
    EXPECT_TRUE(::GetHandleInformation(reinterpret_cast<HANDLE>(::_get_osfhandle(fd)), &flags));
    return (flags & HANDLE_FLAG_INHERIT) != 0;
  };
  for (const char* mode : {"w", "r+b", "a,ccs=UTF-8"}) {
    FILE* stream = file.fopen(mode);
    ASSERT_NE(stream, nullptr) << mode;
    EXPECT_FALSE(inherited(::_fileno(stream))) << mode;
    std::fclose(stream);
  }
  const int fd = qorin::open_utf8(file.string(), _O_RDONLY, 0);
  ASSERT_GE(fd, 0);
  EXPECT_FALSE(inherited(fd));
  ::_close(fd);
}

// Windows names are UTF-16: text that is not UTF-8 names nothing.
TEST(Win32Path, InvalidUtf8NamesNothing) {
  EXPECT_THROW(Path("a\xFF"), utf8::invalid_utf8);
  EXPECT_EQ(qorin::mkdir_utf8("\xFF"), -1);  // never throws
  EXPECT_EQ(qorin::open_utf8("\xFF", _O_RDONLY, 0), -1);
  EXPECT_EQ(errno, EINVAL);
}

// Equality takes whole rounds of units at a time: a difference, a zero or a
// non-ASCII unit at any place of a long path must still count.
TEST(Win32Path, LongPathsCompareEveryUnit) {
  const std::string lower = "c:\\projects\\filter_3ghz\\layout_rev_b\\schematic_version_2.sch";
  std::string upper = lower;
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  for (std::size_t n = 1; n <= lower.size(); ++n) {
    EXPECT_EQ(Path(lower.substr(0, n)), Path(upper.substr(0, n))) << n;
    std::string other = upper.substr(0, n);
    other[n - 1] = '~';  // above every letter
    EXPECT_NE(Path(lower.substr(0, n)), Path(other)) << n;
    EXPECT_EQ(Path::compare_filenames(Path(lower.substr(0, n)), Path(other)), -1) << n;
    std::string accented = lower.substr(0, n - 1) + "\xC3\xA9" + lower.substr(n - 1);  // é, then É
    std::string accented_upper = upper.substr(0, n - 1) + "\xC3\x89" + upper.substr(n - 1);
    EXPECT_EQ(Path(accented), Path(accented_upper)) << n;
    std::string zero = lower, zero_other = upper;
    zero[n - 1] = zero_other[n - 1] = '\0';
    zero_other.back() = '!';
    // Text after a zero does not count; at the very end the zero meets the '!'.
    EXPECT_EQ(Path::compare_filenames(Path(zero), Path(zero_other)), n == lower.size() ? -1 : 0) << n;
    EXPECT_EQ(Path(zero) == Path(zero_other), n != lower.size()) << n;
  }
}

}  // namespace
