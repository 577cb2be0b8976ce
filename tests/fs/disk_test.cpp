// File-system members, iterators, the UTF-8 wrappers and scratch objects, on
// the native platform. Everything happens in a fresh scratch directory.
#include <qorin/fs.h>

#include "support/scoped_environment.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <fcntl.h>

#include <set>
#include <thread>

namespace {

using qorin::Path;
using qorin::testing::thrown_message;
using FsError = std::filesystem::filesystem_error;

class Disk : public ::testing::Test {
 protected:
  Path at(const std::string& name) const { return Path(scratch_.path()) /= Path(name); }
  void touch(const Path& p, const std::string& text = "") {
    FILE* f = p.fopen("wb");
    ASSERT_NE(f, nullptr) << p.string();
    std::fputs(text.c_str(), f);
    std::fclose(f);
  }
  qorin::TemporaryDirectory scratch_{"qorin-fs-test"};
};

TEST_F(Disk, ThrowingMembersNameOperationAndPath) {
  const Path missing = at("missing");
  struct Case { const char* operation; std::string what; };
  const Case cases[] = {
      {"create_directory", thrown_message<FsError>([&] { (Path(missing) /= Path("x")).create_directory(); })},
      {"file_size", thrown_message<FsError>([&] { missing.file_size(); })},
      {"rename", thrown_message<FsError>([&] { missing.rename(at("other")); })},
      {"directory_iterator::directory_iterator", thrown_message<FsError>([&] { qorin::DirectoryIterator{missing}; })},
      {"recursive_directory_iterator::recursive_directory_iterator",
       thrown_message<FsError>([&] { qorin::RecursiveDirectoryIterator{missing}; })},
  };
  for (const Case& c : cases) {
    EXPECT_NE(c.what.find(c.operation), std::string::npos) << c.what;
    EXPECT_NE(c.what.find(missing.string()), std::string::npos) << c.what;
  }
  std::error_code ec = std::make_error_code(std::errc::io_error);
  EXPECT_FALSE(missing.exists(ec));
  EXPECT_FALSE(ec);  // absence is an answer, not an error
  qorin::DirectoryIterator quiet(missing, ec);
  EXPECT_TRUE(ec);
}

TEST_F(Disk, CreateAndDeleteFollowTheirOwnRules) {
  const Path dir = at("d");
  EXPECT_TRUE(dir.create_directory());
  EXPECT_TRUE(dir.create_directory());  // already there still counts
  EXPECT_FALSE(dir.delete_file());      // a directory is not a file
  EXPECT_TRUE(dir.is_directory());
  touch(Path(dir) /= Path("f"));
  EXPECT_NE(thrown_message<FsError>([&] { dir.delete_directory(); }).find("remove"), std::string::npos);
  EXPECT_FALSE((Path(dir) /= Path("f")).delete_directory());
  EXPECT_TRUE((Path(dir) /= Path("f")).delete_file());
  EXPECT_FALSE((Path(dir) /= Path("f")).delete_file());
  EXPECT_TRUE(dir.delete_file_or_directory());
  EXPECT_FALSE(dir.delete_file_or_directory());
  EXPECT_TRUE((Path(dir) /= Path("a/b")).create_directories());
  EXPECT_TRUE(dir.remove_all());
  EXPECT_FALSE(dir.remove_all());
}

TEST_F(Disk, FopenRetriesDotDotAsCompletedPath) {
  touch(at("f.txt"), "x");
  EXPECT_EQ(at("nope").fopen("r"), nullptr);
  Path via_missing = at("nope");
  via_missing /= Path("../f.txt");
  FILE* f = via_missing.fopen("r");
  ASSERT_NE(f, nullptr);
  std::fclose(f);
  ASSERT_TRUE(at("sub").create_directory());
  Path same = at("f.txt");
  EXPECT_TRUE(same.equivalent(at("sub/../f.txt")));  // same file, other text
  EXPECT_NE(thrown_message<FsError>([&] { same.equivalent(at("gone")); }).find("equivalent"), std::string::npos);
  EXPECT_FALSE(same.equivalent(scratch_.path()));
}

TEST_F(Disk, IteratorsOverEmptyAndNestedDirectories) {
  EXPECT_TRUE(qorin::DirectoryIterator(scratch_.path()) == qorin::DirectoryIterator());
  EXPECT_TRUE(qorin::RecursiveDirectoryIterator(scratch_.path()) == qorin::RecursiveDirectoryIterator());
  ASSERT_TRUE(at("a/b").create_directories());
  touch(at("a/b/f"));
  touch(at("g"));
  std::multiset<std::pair<std::string, int>> seen;
  for (qorin::RecursiveDirectoryIterator it(scratch_.path()), end; it != end; ++it)
    seen.insert({it->path().filename().string(), it.depth()});
  EXPECT_EQ(seen, (std::multiset<std::pair<std::string, int>>{{"a", 0}, {"b", 1}, {"f", 2}, {"g", 0}}));
  int top = 0;
  for (qorin::DirectoryIterator it(scratch_.path()), end; it != end; ++it) ++top;
  EXPECT_EQ(top, 2);
}

TEST_F(Disk, Utf8WrappersKeepRuntimeResults) {
  const std::string dir = at("w").string(), file = at("w/f").string(), missing = at("m/x").string();
  EXPECT_EQ(qorin::mkdir_utf8(dir), 0);
  EXPECT_EQ(qorin::mkdir_utf8(dir), 0);
  EXPECT_EQ(qorin::mkdir_utf8(missing), -1);
  EXPECT_EQ(qorin::mkpath_utf8(missing), 0);
  EXPECT_EQ(qorin::remove_utf8(missing), -1);  // never a directory
  EXPECT_EQ(qorin::rmdir_utf8(missing), 0);
  EXPECT_EQ(qorin::rmdir_utf8(missing), -1);
  EXPECT_EQ(qorin::unlink_utf8(file), -1);
  EXPECT_EQ(qorin::filesize_utf8(file), 0u);
  EXPECT_EQ(qorin::access_utf8(file, 0), -1);
  EXPECT_EQ(qorin::mkdir_utf8("\xFF"), -1);  // bad UTF-8 never throws
  EXPECT_EQ(qorin::open_utf8("\xFF", O_RDONLY, 0), -1);
  EXPECT_EQ(errno, EINVAL);
  EXPECT_EQ(qorin::rename_utf8(file, file + "2"), -1);
  char small[2];
  EXPECT_EQ(qorin::getcwd_utf8_legacy(small, sizeof small), nullptr);
  EXPECT_EQ(errno, ERANGE);
  char* owned = qorin::getcwd_utf8_legacy(nullptr, 0);
  EXPECT_EQ(owned, qorin::getcwd_utf8());
  std::free(owned);
}

TEST_F(Disk, NonAsciiNameEndToEnd) {
  const std::string name = "R\xC3\xA9sum\xC3\xA9 \xE2\x9C\x93 \xE6\x95\xB0\xE6\x8D\xAE.txt";  // «Résumé ✓ 数据.txt»
  const std::string full = at(name).string();
  const int fd = qorin::open_utf8(full, O_WRONLY | O_CREAT | O_EXCL, 0644);
  ASSERT_GE(fd, 0);
  FILE* out = fdopen(fd, "wb");
  std::fputs("12345", out);
  std::fclose(out);
  qorin::DirectoryIterator it(scratch_.path());
  ASSERT_NE(it, qorin::DirectoryIterator());
  EXPECT_EQ(it->path().filename().string(), name);
  FILE* in = Path(full).fopen("rb");
  ASSERT_NE(in, nullptr);
  std::fclose(in);
  EXPECT_EQ(qorin::filesize_utf8(full), 5u);
  qorin::FileStatus status{};
  EXPECT_EQ(qorin::stat_utf8(full, &status), 0);
  EXPECT_EQ(status.st_size, 5);
  EXPECT_EQ(qorin::rename_utf8(full, full + ".old"), 0);
  EXPECT_EQ(qorin::unlink_utf8(full + ".old"), 0);
  EXPECT_EQ(qorin::DirectoryIterator(scratch_.path()), qorin::DirectoryIterator());
}

TEST_F(Disk, ScratchObjectsAreDistinctAndCleanedUp) {
  qorin::testing::ScopedEnvironmentVariable root("QORIN_TEMP_PATH", scratch_.path().string());
  EXPECT_EQ(qorin::temporary_root(), scratch_.path());
  std::vector<std::vector<Path>> made(4);
  std::vector<std::thread> threads;
  for (auto& list : made)
    threads.emplace_back([&list] {
      for (int i = 0; i < 25; ++i) {
        qorin::TemporaryDirectory dir("t");
        qorin::TemporaryFile file(dir.path(), "f", ".tmp");
        list.push_back(dir.path());
      }
    });
  for (auto& t : threads) t.join();
  std::set<std::string> names;
  for (const auto& list : made)
    for (const Path& p : list) names.insert(p.string());
  EXPECT_EQ(names.size(), 100u);
  EXPECT_EQ(qorin::DirectoryIterator(scratch_.path()), qorin::DirectoryIterator());

  Path kept, thrown;
  try {
    qorin::TemporaryDirectory dir;
    qorin::TemporaryFile file;
    thrown = file.path();
    ASSERT_TRUE(thrown.exists());
    qorin::TemporaryDirectory moved = std::move(dir);
    qorin::TemporaryFile keep;
    keep.keep();
    kept = keep.path();
    throw std::runtime_error("boom");
  } catch (const std::runtime_error&) {
  }
  EXPECT_FALSE(thrown.exists());
  EXPECT_TRUE(kept.delete_file());
  EXPECT_EQ(qorin::DirectoryIterator(scratch_.path()), qorin::DirectoryIterator());
}

TEST_F(Disk, DirectorySaverReturns) {
  const Path before = Path::current_path();
  {
    qorin::DirectorySaver saver;
    ASSERT_EQ(qorin::chdir_utf8(scratch_.path()), 0);
    EXPECT_TRUE(Path::current_path().equivalent(scratch_.path()));
  }
  EXPECT_EQ(Path::current_path(), before);
}

}  // namespace
