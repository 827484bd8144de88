// SPDX-License-Identifier: MIT
#include "core/io/Files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <random>

#include "core/io/Paths.h"
#include "support/Support.h"

namespace tesselink {
namespace {

std::vector<std::string> Lines(const std::string& path) {
  LineReader reader(path);
  std::vector<std::string> lines;
  for (std::string_view line; reader.ReadLine(line);) lines.emplace_back(line);
  EXPECT_TRUE(reader.AtEnd());
  EXPECT_EQ(reader.LineNumber(), static_cast<std::int64_t>(lines.size()));
  return lines;
}

TEST(LineReader, EveryLineEndThatOccurs) {
  const Folder folder;
  const std::vector<std::string> expected{"one", "", "three"};
  for (const char* text :
       {"one\r\n\r\nthree\r\n", "one\n\nthree\n", "one\r\r\n\r\nthree", "one\r\rthree\r", "one\n\nthree"}) {
    EXPECT_EQ(Lines(folder.Put("t", text)), expected) << text;
  }
  EXPECT_TRUE(Lines(folder.Put("t", "")).empty());
  // A line feed begins the second block, and one comes later in it.
  const std::string block((std::size_t{1} << 17) - 1, 'x');
  EXPECT_EQ(Lines(folder.Put("t", block + "\r\ny\r\n")), (std::vector<std::string>{block, "y"}));
  EXPECT_EQ(Lines(folder.Put("t", block + "\ry\rz\n")), (std::vector<std::string>{block, "y", "z\n"}));
  EXPECT_EQ(Lines(folder.Put("t", std::string("a\0b\n", 4))), std::vector<std::string>{std::string("a\0b", 3)});
}

TEST(LineReader, LinesAcrossBlocksAndOneThatIsTooLong) {
  const Folder folder;
  std::vector<std::string> expected;
  std::string text;
  std::mt19937 random(5);
  for (int i = 0; i < 3000; ++i) {
    expected.emplace_back(random() % 300 + (i % 1000 == 7 ? 300000 : 0), static_cast<char>('a' + i % 26));
    text += expected.back() + (i % 2 == 0 ? "\n" : "\r\n");
  }
  EXPECT_EQ(Lines(folder.Put("t", text)), expected);

  LineReader reader(folder.Put("long", "first\n" + std::string(LineReader::kLongestLine * 2, 'x') + "\n"));
  std::string_view line;
  EXPECT_TRUE(reader.ReadLine(line));
  EXPECT_TRUE(Holds(ErrorOf([&] { reader.ReadLine(line); }), "long, line 2: is longer than 6 MB"));
}

TEST(LineReader, AFileThatBecomesShorterIsAnErrorAndAByteOrderMarkIsNoText) {
  const Folder folder;
  const std::string path = folder.Put("t", std::string(1000000, 'a') + "\nend\n");
  LineReader reader(path);
  std::filesystem::resize_file(path, 100);
  std::string_view line;
  EXPECT_TRUE(Holds(ErrorOf([&] {
                      while (!reader.AtEnd()) reader.ReadLine(line);
                    }),
                    "became shorter while it was read"));
  EXPECT_EQ(Lines(folder.Put("u", "\xEF\xBB\xBFone\n")), std::vector<std::string>{"one"});
}

TEST(ReadWindow, GivesTheFilesBytesInAnyOrder) {
  const Folder folder;
  std::string bytes(300000, '\0');
  std::mt19937 random(6);
  for (char& c : bytes) c = static_cast<char>(random());
  BinaryFile file(folder.Put("b", bytes));
  ReadWindow window(file);
  std::int64_t next = 0;
  for (int i = 0; i < 20000; ++i) {
    const std::int64_t offset = i % 3 == 0 ? static_cast<std::int64_t>(random() % 310000) : next;
    const std::size_t count = random() % (i % 50 == 0 ? ReadWindow::kCapacity : 200);
    const auto got = window.At(offset, count);
    const std::string expected = offset < 300000 ? bytes.substr(static_cast<std::size_t>(offset), count) : "";
    ASSERT_EQ(std::string(reinterpret_cast<const char*>(got.data()), got.size()), expected);
    next = offset + static_cast<std::int64_t>(count);
  }
}

TEST(FileWriter, WhatIsWrittenIsWhatIsRead) {
  const Folder folder;
  const std::string part = folder.Put("part", std::string(1000000, 'p'));
  FileWriter writer(folder.Path("out"));
  std::string expected;
  for (int i = 0; i < 50000; ++i) {
    writer.Line("abc").Integer(i).Write(" ").Number(i / 8.0).EndLine();
    expected += "abc\r\n" + std::to_string(i) + " " + NumberText(i / 8.0) + "\r\n";
  }
  writer.Write(std::string(500000, 'y')).Append(part);
  writer.Close();
  EXPECT_TRUE(Folder::Get(folder.Path("out")) == expected + std::string(500000, 'y') + std::string(1000000, 'p'));
}

TEST(FileWriter, ADeviceThatTakesNothingIsFullAndMayTellSoLate) {
  const Folder folder;
  const auto whyNotClosed = [&](sys::FaultHook hook) {
    FileWriter writer(folder.Path("out"));
    writer.Line("text");
    sys::faultHook = hook;
    const std::string reason = ErrorOf([&] { writer.Close(); });
    sys::faultHook = nullptr;
    return reason.substr(reason.rfind(": "));
  };
  EXPECT_EQ(whyNotClosed([](sys::Call call) {
              return call == sys::Call::Write ? sys::Fault{0, 0} : sys::Fault{};
            }),
            ": No space left on device");
  EXPECT_EQ(whyNotClosed([](sys::Call call) { return call == sys::Call::Close ? sys::Fault{EDQUOT} : sys::Fault{}; }),
            ": Disk quota exceeded");
}

TEST(TempFile, BelongsToItsOwnerAndGoesWithTheObject) {
  namespace fs = std::filesystem;
  const Folder folder;
  setenv("TMPDIR", folder.Path("").c_str(), 1);
  const auto files = [&] { return std::distance(fs::directory_iterator(folder.Path("")), fs::directory_iterator()); };
  if (fork() == 0) {
    const TempFile left("DXF");
    _exit(0);
  }
  wait(nullptr);
  EXPECT_EQ(files(), 1);
  {
    TempFile file("DXF");
    EXPECT_TRUE(fs::path(file.Path()).filename().string().starts_with("DXF"));
    EXPECT_EQ(fs::status(file.Path()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    FileWriter(file.TakeHandle(), file.Path()).Close();
    TempFile moved(std::move(file));
    EXPECT_EQ(files(), 1) << "that of the killed program has gone";
    const TempFile other("DXF");
    EXPECT_EQ(files(), 2) << "one in use stays, though nobody writes it";
    EXPECT_EQ(FileNameOf(TempFileName("U2D")).size(), 13U);
    FileWriter nameless = FileWriter::Nameless("tesselink");
    EXPECT_EQ(files(), 3);
    nameless.Line("text");
    LineReader lines(nameless.ReadBack());
    std::string_view line;
    EXPECT_TRUE(lines.ReadLine(line) && line == "text" && lines.AtEnd());
  }
  EXPECT_EQ(files(), 1);
  unsetenv("TMPDIR");
}

TEST(Spool, GivesWhatComesThroughAPipeAgain) {
  const Folder folder;
  const std::string pipe = folder.Path("pipe"), text = std::string(300000, 'a') + "\nlast";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const auto withPipe = [&](const auto& read) {
    if (fork() == 0) {
      FileWriter(pipe).Write(text).Close();
      _exit(0);
    }
    read();
    wait(nullptr);
  };
  const std::vector<std::string> expected{std::string(300000, 'a'), "last"};
  withPipe([&] {
    Spool spool(pipe);
    EXPECT_EQ(Lines(spool.Path()), expected);
    EXPECT_EQ(Lines(spool.Path()), expected);
    EXPECT_EQ(spool.Named(spool.Path() + ", line 2: odd"), pipe + ", line 2: odd");
  });
  withPipe([&] {
    LineReader reader(BinaryFile::Pipe(sys::Open(pipe, sys::Access::ReadPipe), pipe));
    std::string_view line;
    for (const std::string& each : expected) EXPECT_TRUE(!reader.AtEnd() && reader.ReadLine(line) && line == each);
    EXPECT_TRUE(reader.AtEnd());
  });
  EXPECT_TRUE(Holds(ErrorOf([&] { BinaryFile{pipe}; }), "is not a regular file"));
}

}  // namespace
}  // namespace tesselink
