// Path on POSIX: bytes kept, exact comparison, links and private modes.
#include <qorin/fs.h>

#include "support/scoped_environment.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utf8.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using qorin::Path;

TEST(PosixPath, BackslashIsAnOrdinaryCharacter) {
  EXPECT_EQ(Path("a\\b/c").string(), "a\\b/c");
  EXPECT_EQ(Path("a\\b/c").generic(), "a\\b/c");
  EXPECT_EQ(Path("d/a\\b").filename().string(), "a\\b");
  EXPECT_NE(Path("/x/Y"), Path("/x/y"));
  EXPECT_LT(Path("/x/Y"), Path("/x/y"));
  EXPECT_EQ(Path("/a\\b/").normalize().string(), "/a\\b");
}

TEST(PosixPath, DecompositionExceptions) {
  struct Case { const char* in; const char* filename; const char* stem; const char* parent; const char* removed; };
  const Case cases[] = {{"/a/b.txt", "b.txt", "b", "/a", "/a/"}, {"/a/", "", "", "/a", "/a/"}, {"a/.", "", "", "a", "a/"},
                        {"a/..", "", "", "a", "a/"},             {"/", "", "", "/", "/"},     {"a", "a", "a", "", ""},
                        {"/.rc", ".rc", ".rc", "/", "/"}};
  for (const Case& c : cases) {
    EXPECT_EQ(Path(c.in).filename().string(), c.filename) << c.in;
    EXPECT_EQ(Path(c.in).stem().string(), c.stem) << c.in;
    EXPECT_EQ(Path(c.in).parent_path().string(), c.parent) << c.in;
    EXPECT_EQ(Path(c.in).remove_filename().string(), c.removed) << c.in;
  }
}

TEST(PosixPath, DanglingLinkIsDeletedAsAFile) {
  qorin::TemporaryDirectory dir("qorin-link");
  const Path link = Path(dir.path()) /= Path("link");
  ASSERT_EQ(::symlink("nowhere", link.string().c_str()), 0);
  EXPECT_FALSE(link.exists());
  EXPECT_TRUE(link.delete_file());
  EXPECT_FALSE(link.delete_file());
}

TEST(PosixPath, ScratchObjectsArePrivate) {
  qorin::TemporaryDirectory dir("qorin-mode");
  qorin::TemporaryFile file(dir.path(), "f", "");
  struct stat st {};
  ASSERT_EQ(::stat(dir.path().string().c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0700u);
  ASSERT_EQ(::stat(file.path().string().c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0600u);
}

TEST(PosixPath, SimplifyAndCanonical) {
  EXPECT_EQ(qorin::simplify_path("/a/./b/"), "/a/b");
  EXPECT_EQ(qorin::simplify_path("/"), "/");
  EXPECT_EQ(qorin::fixFilenameSlashes("a/b\\c/"), "a\\b\\c\\");
  EXPECT_EQ(qorin::get_directory_from_file("/w/a/./f.txt"), "/w/a");
  EXPECT_EQ(qorin::canonical_path("x/../y"), qorin::getcwd_utf8() + "/y");
}

// A child started with exec must not inherit the library's files.
TEST(PosixPath, FilesAreClosedOnExec) {
  qorin::TemporaryDirectory dir("qorin-cloexec");
  const Path file = Path(dir.path()) /= Path("f");
  for (const char* mode : {"w", "r+b", "a"}) {
    FILE* stream = file.fopen(mode);
    ASSERT_NE(stream, nullptr) << mode;
    EXPECT_NE(::fcntl(fileno(stream), F_GETFD) & FD_CLOEXEC, 0) << mode;
    std::fclose(stream);
  }
  const int fd = qorin::open_utf8(file.string(), O_RDONLY, 0);
  ASSERT_GE(fd, 0);
  EXPECT_NE(::fcntl(fd, F_GETFD) & FD_CLOEXEC, 0);
  ::close(fd);
}

// Another program may leave a name that is not UTF-8: it is listed, reads as
// its bytes, and those bytes reach it again.
TEST(PosixPath, NameThatIsNotUtf8StaysReachable) {
  qorin::TemporaryDirectory dir("qorin-bytes");
  const std::string name = "caf\xE9", full = dir.path().string() + "/" + name;  // Latin-1
  for (const std::string& file : {full + "1", full + "2"}) ::close(::open(file.c_str(), O_WRONLY | O_CREAT, 0600));
  std::vector<std::string> listed;
  for (qorin::DirectoryIterator it(dir.path()), end; it != end; ++it) listed.push_back(it->path().string());
  std::sort(listed.begin(), listed.end());
  ASSERT_EQ(listed, (std::vector<std::string>{full + "1", full + "2"}));
  EXPECT_EQ(Path(listed[0]).filename().string(), name + "1");
  EXPECT_TRUE(Path(listed[0]).is_regular_file());
  struct stat st {};
  EXPECT_EQ(qorin::stat_utf8(listed[0], &st), 0);
  EXPECT_THROW(Path(listed[0]).u16string(), utf8::invalid_utf8);
  EXPECT_EQ(qorin::rename_utf8(listed[0], full + "3"), 0);
  EXPECT_TRUE(Path(full + "3").delete_file());
  EXPECT_TRUE(qorin::DirectoryEntry(Path(listed[1])).path().delete_file());  // the entry's own Path
  EXPECT_EQ(qorin::DirectoryIterator(dir.path()), qorin::DirectoryIterator());
  const std::string created = full + "4";
  EXPECT_EQ(qorin::mkdir_utf8(created), 0);
  EXPECT_EQ(::access(created.c_str(), F_OK), 0);
  EXPECT_EQ(qorin::rmdir_utf8(created), 0);
}

TEST(PosixPath, TempnamFolder) {
  qorin::TemporaryDirectory dir("qorin-tempnam");
  auto name_in = [](const char* folder) {
    char* name = qorin::tempnam_utf8(folder, "pre");
    const std::string text = name ? name : "(null)";
    std::free(name);
    return text;
  };
  const std::string given = name_in(dir.path().string().c_str());
  EXPECT_EQ(given.substr(0, given.size() - 6), dir.path().string() + "/pre");
  EXPECT_EQ(name_in((dir.path().string() + "/").c_str()).size(), given.size());
  {
    qorin::testing::ScopedEnvironmentVariable tmpdir("TMPDIR", dir.path().string());
    EXPECT_EQ(Path(name_in(nullptr)).parent_path(), dir.path());
    EXPECT_EQ(Path(name_in("")).parent_path(), dir.path());
  }
  errno = 0;
  EXPECT_EQ(name_in((dir.path().string() + "/missing").c_str()), "(null)");
  EXPECT_EQ(errno, ENOENT);
}

}  // namespace
