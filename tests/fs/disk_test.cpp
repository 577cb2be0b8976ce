// File-system members, iterators, the UTF-8 wrappers and scratch objects, on
// the native platform. Everything happens in a fresh scratch directory.
#include <qorin/fs.h>

#include "support/scoped_environment.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <fcntl.h>

#include <set>
#include <stdexcept>
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

// A name cut at its zero would be another file: «ab» for «ab\0cd».
TEST_F(Disk, NameWithZeroIsRefusedNeverCut) {
  const std::string cut = at("ab").string(), zero = cut + std::string("\0cd", 3);
  const Path named(zero), other = at("other");
  auto refused = [](const char* operation, auto call) -> std::string {
    try {
      call();
    } catch (const FsError& e) {
      if (e.code() != std::errc::invalid_argument) return "code " + e.code().message();
      return std::string(e.what()).find(operation) == std::string::npos ? e.what() : "";
    }
    return "nothing thrown";
  };
  auto refused_c = [](int result) { return result == -1 && errno == EINVAL; };
  auto nothing_at_cut = [&] { return !Path(cut).exists() && !Path(cut).is_directory(); };

  EXPECT_EQ(refused("create_directory", [&] { named.create_directory(); }), "");
  EXPECT_EQ(refused("create_directories", [&] { named.create_directories(); }), "");
  EXPECT_EQ(named.fopen("w"), nullptr);
  EXPECT_EQ(errno, EINVAL);
  EXPECT_TRUE(refused_c(qorin::mkdir_utf8(zero)));
  EXPECT_TRUE(refused_c(qorin::mkpath_utf8(zero)));
  EXPECT_TRUE(refused_c(qorin::open_utf8(zero, O_WRONLY | O_CREAT, 0644)));
  FILE* stream = other.fopen("w");
  ASSERT_NE(stream, nullptr);
  errno = 0;
  EXPECT_EQ(qorin::freopen_utf8(zero, "w", stream), nullptr);
  EXPECT_EQ(errno, EINVAL);
  std::fclose(stream);  // a refused name leaves the stream as it was
  EXPECT_EQ(refused("create_directory", [&] { qorin::TemporaryDirectory(named, "t"); }), "");
  EXPECT_THROW(qorin::TemporaryFile(scratch_.path(), std::string("ab\0cd", 5), ""), std::invalid_argument);
  EXPECT_THROW(qorin::TemporaryFile(scratch_.path(), "ab", std::string("\0cd", 3)), std::invalid_argument);
  EXPECT_TRUE(nothing_at_cut());

  touch(Path(cut), "kept");
  EXPECT_FALSE(named.exists());
  std::error_code ec;
  EXPECT_FALSE(named.exists(ec));
  EXPECT_FALSE(ec);
  EXPECT_FALSE(named.is_regular_file());
  EXPECT_FALSE(named.is_readable());
  qorin::FileStatus status{};
  EXPECT_TRUE(refused_c(qorin::stat_utf8(zero, &status)));
  EXPECT_TRUE(refused_c(qorin::access_utf8(zero, 0)));
  EXPECT_EQ(named.fopen("r"), nullptr);
  EXPECT_EQ(refused("file_size", [&] { named.file_size(); }), "");
  EXPECT_EQ(refused("remove", [&] { named.delete_file(); }), "");
  EXPECT_FALSE(named.delete_file(ec));
  EXPECT_EQ(ec, std::errc::invalid_argument);
  EXPECT_EQ(refused("remove", [&] { named.delete_file_or_directory(); }), "");
  EXPECT_EQ(refused("remove_all", [&] { named.remove_all(); }), "");
  EXPECT_EQ(refused("rename", [&] { named.rename(other); }), "");
  EXPECT_EQ(refused("rename", [&] { Path(cut).rename(Path(other.string() + std::string("\0x", 2))); }), "");
  EXPECT_EQ(refused("equivalent", [&] { Path(named).equivalent(other); }), "");
  EXPECT_TRUE(refused_c(qorin::unlink_utf8(zero)));
  EXPECT_TRUE(refused_c(qorin::remove_utf8(zero)));
  EXPECT_TRUE(refused_c(qorin::rename_utf8(zero, other.string())));
  EXPECT_EQ(qorin::filesize_utf8(zero), 0u);
  EXPECT_TRUE(Path(cut).is_regular_file());
  ASSERT_TRUE(Path(cut).delete_file());

  ASSERT_TRUE(Path(cut).create_directory());
  EXPECT_EQ(refused("remove", [&] { named.delete_directory(); }), "");
  EXPECT_EQ(refused("directory_iterator::directory_iterator", [&] { qorin::DirectoryIterator{named}; }), "");
  EXPECT_EQ(refused("recursive_directory_iterator::recursive_directory_iterator",
                    [&] { qorin::RecursiveDirectoryIterator{named}; }),
            "");
  qorin::DirectoryIterator quiet(named, ec);
  EXPECT_EQ(ec, std::errc::invalid_argument);
  EXPECT_TRUE(refused_c(qorin::rmdir_utf8(zero)));
  {
    qorin::DirectorySaver saved;
    EXPECT_TRUE(refused_c(qorin::chdir_utf8(named)));
    EXPECT_EQ(Path::current_path(), saved.saved());
  }
  EXPECT_TRUE(Path(cut).is_directory());
}

TEST_F(Disk, ScratchNamesStayInTheirFolder) {
  const Path inner = at("inner");
  ASSERT_TRUE(inner.create_directory());
  for (const char* bad : {"../escape", "..\\escape", "sub/x", "\\..\\..\\x", "..", "/abs", "C:\\abs", "C:x"}) {
    const std::string as_prefix =
        qorin::testing::thrown_message<std::invalid_argument>([&] { qorin::TemporaryDirectory(inner, bad); });
    EXPECT_NE(as_prefix.find("prefix"), std::string::npos) << bad << ": " << as_prefix;
    const std::string as_suffix =
        qorin::testing::thrown_message<std::invalid_argument>([&] { qorin::TemporaryFile(inner, "t", bad); });
    EXPECT_NE(as_suffix.find("suffix"), std::string::npos) << bad << ": " << as_suffix;
    EXPECT_THROW(qorin::TemporaryFile(inner, bad, ""), std::invalid_argument) << bad;
  }
  EXPECT_EQ(qorin::DirectoryIterator(inner), qorin::DirectoryIterator());
  int entries = 0;
  for (qorin::DirectoryIterator it(scratch_.path()), end; it != end; ++it) ++entries;
  EXPECT_EQ(entries, 1);
  qorin::TemporaryFile plain(inner, "run.1", ".cir");  // dots and all, as long as it stays a name
  EXPECT_EQ(plain.path().parent_path(), inner);
}

// The scratch object must not depend on where the process is when it dies.
TEST_F(Disk, RelativeTemporaryRootIsMadeAbsolute) {
  ASSERT_TRUE(at("a").create_directory());
  ASSERT_TRUE(at("b/a").create_directories());
  qorin::DirectorySaver saved;
  ASSERT_EQ(qorin::chdir_utf8(scratch_.path()), 0);
  Path made, namesake;
  {
    qorin::TemporaryDirectory dir(Path("a"), "t");
    made = dir.path();
    EXPECT_TRUE(made.is_absolute());
    EXPECT_TRUE(made.is_directory());
    ASSERT_EQ(qorin::chdir_utf8(Path("b")), 0);
    namesake = Path("a") /= made.filename();
    ASSERT_TRUE(namesake.create_directory());
  }
  EXPECT_FALSE(made.exists());
  EXPECT_TRUE(namesake.is_directory());
  ASSERT_EQ(qorin::chdir_utf8(scratch_.path()), 0);
  qorin::testing::ScopedEnvironmentVariable root("QORIN_TEMP_PATH", "a");
  qorin::TemporaryFile file;
  EXPECT_TRUE(file.path().is_absolute());
  EXPECT_EQ(file.path().parent_path(), at("a"));
}

TEST_F(Disk, ScratchInAMissingFolderFails) {
  EXPECT_NE(thrown_message<FsError>([&] { qorin::TemporaryDirectory(at("missing"), "t"); }).find("create_directory"),
            std::string::npos);
  EXPECT_NE(thrown_message<FsError>([&] { qorin::TemporaryFile(at("missing"), "t", ""); }).find("create_file"),
            std::string::npos);
  EXPECT_FALSE(at("missing").exists());
}

TEST_F(Disk, LegacyGetcwdKeepsToItsBuffer) {
  const std::string cwd = qorin::getcwd_utf8();
  std::vector<char> buffer(cwd.size() + 2, '#');
  errno = 0;
  EXPECT_EQ(qorin::getcwd_utf8_legacy(buffer.data(), int(cwd.size())), nullptr);  // no room for the zero
  EXPECT_EQ(errno, ERANGE);
  EXPECT_EQ(std::string(buffer.begin(), buffer.end()), std::string(cwd.size() + 2, '#'));
  EXPECT_EQ(qorin::getcwd_utf8_legacy(buffer.data(), int(cwd.size() + 1)), buffer.data());
  EXPECT_EQ(std::string(buffer.data()), cwd);
  EXPECT_EQ(buffer[cwd.size() + 1], '#');
  errno = 0;
  EXPECT_EQ(qorin::getcwd_utf8_legacy(buffer.data(), 0), nullptr);
  EXPECT_EQ(errno, EINVAL);
}

TEST_F(Disk, TempnamNamesAFreshFileInTheFolder) {
  char* name = qorin::tempnam_utf8(scratch_.path().string().c_str(), "pre");
  ASSERT_NE(name, nullptr);
  const Path made(name);
  std::free(name);
  EXPECT_EQ(made.filename().string().rfind("pre", 0), 0u) << made.string();
  EXPECT_FALSE(made.exists());
  EXPECT_TRUE(made.parent_path().is_directory()) << made.string();
}

}  // namespace
