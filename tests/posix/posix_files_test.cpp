// What only POSIX systems do: the user's data folder by the XDG rules, a
// missing folder on the way, and the lock as other processes see it.
#include <cstdlib>
#include <optional>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include "Files.h"
#include "system/Dateien.h"

namespace zd::test {
namespace {

namespace fs = std::filesystem;

// Sets an environment variable for the length of a test.
class Environment {
public:
    Environment(const char* name, const std::string& value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        ::setenv(name, value.c_str(), 1);
    }
    ~Environment() {
        if (old_) {
            ::setenv(name_, old_->c_str(), 1);
        } else {
            ::unsetenv(name_);
        }
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    const char* name_;
    std::optional<std::string> old_;
};

TEST_F(Files, TheSystemsDataFolderIsTheUsersByTheXdgRulesMadeIfMissing) {
    drive::HeadlessPlatform system{out, "", std::nullopt, true};  // as with --system
    {
        Environment dataHome("XDG_DATA_HOME", at("data/home"));
        EXPECT_EQ(system.systemDriveRoot(), at("data/home"));
        EXPECT_TRUE(fs::is_directory(at("data/home")));
    }
    Environment home("HOME", at("user"));
    {
        // Only an absolute XDG_DATA_HOME counts.
        Environment relative("XDG_DATA_HOME", "relative/data");
        EXPECT_EQ(system.systemDriveRoot(), at("user/.local/share"));
    }
    Environment unreachable("XDG_DATA_HOME", at("empty.txt/data"));
    EXPECT_EQ(system.systemDriveRoot(), "");
}

TEST_F(Files, ANameWhoseFolderIsMissingExists) {
    EXPECT_TRUE(sys::ExistiertDatei(platform, at("no-such-folder/missing.txt")));
    EXPECT_TRUE(sys::ExistiertDatei(platform, at("empty.txt/under-a-file")));
}

TEST_F(Files, TheLockShutsOutEveryOtherHolderUntilItGoes) {
    int error = 0;
    auto lock = platform.lockFile(at("list.lock"), error);
    ASSERT_TRUE(lock);
    const int other = ::open(at("list.lock").c_str(), O_RDWR);
    EXPECT_NE(::flock(other, LOCK_EX | LOCK_NB), 0);
    lock.reset();
    EXPECT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);
    ::close(other);
    EXPECT_FALSE(platform.lockFile(at("folder"), error));
}

}  // namespace
}  // namespace zd::test
