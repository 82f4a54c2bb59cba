#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "Platform/File.h"
#include "Platform/Uuid.h"

TEST(PosixUuid, IsNotTheSameInAForkedChildAndItsParent) {
  std::string text;
  int ends[2];
  ASSERT_TRUE(Platform::CreateUuidText(text) && pipe(ends) == 0);
  const pid_t child = fork();
  const bool created = Platform::CreateUuidText(text);
  if (child == 0) {
    _exit(write(ends[1], text.data(), text.size()) == ssize_t(text.size()) ? 0 : 1);
  }
  close(ends[1]);
  std::string ofChild(text.size(), '\0');
  EXPECT_TRUE(created && read(ends[0], ofChild.data(), ofChild.size()) == ssize_t(ofChild.size()));
  EXPECT_NE(text, ofChild);
  EXPECT_EQ(child, waitpid(child, nullptr, 0));
  close(ends[0]);
}

TEST(PosixFile, WithoutAnEndIsReadNoFurtherThanTheLimit) {
  std::string content;
  EXPECT_EQ(Platform::EReading::kTooLarge, Platform::ReadFile(L"/dev/zero", 100'000, content));
}
