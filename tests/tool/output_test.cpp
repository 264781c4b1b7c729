// What becomes of the file that a command writes: it is replaced as a whole, or it is as it was.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "tests/support/tool.h"

namespace qenzor::testing {

namespace {

class Output : public Tool {
 protected:
  std::string m_map = Sample("world.qen");
  std::string m_content = Load(m_map);
  std::string m_copy = "\"$q\" copy '" + m_map + "' ";

  bool HoldsMap(const std::string& name) const { return Load(At(name)) == m_content; }
  mode_t ModeOf(const std::string& name) const {
    struct stat status {};
    EXPECT_EQ(::stat(At(name).c_str(), &status), 0);
    return status.st_mode & 07777;
  }
  void ExpectShell(const std::string& line) const {
    const Outcome outcome = RunShell(line);
    EXPECT_EQ(outcome.Status, 0) << line;
    EXPECT_EQ(outcome.Err, "") << line;
  }
  /// Whether a line of the shell can be run here at all.
  bool Works(const std::string& line) const { return RunShell(line).Status == 0; }
  /// The line, run by a user to whom permissions apply.
  std::string AsUser(const std::string& line) const {
    if (::geteuid() != 0) return line;
    static_cast<void>(::chown(m_folder.c_str(), 65534, 65534));
    return "export q; setpriv --reuid=65534 --regid=65534 --clear-groups sh -c '" + line + "'";
  }
};

TEST_F(Output, AReplacedFileKeepsItsPermissions) {
  Save(At("target"), "old");
  ASSERT_EQ(::chmod(At("target").c_str(), 0640), 0);
  ExpectDone("copy " + m_map + " target");
  EXPECT_EQ(ModeOf("target"), 0640U);
  EXPECT_TRUE(HoldsMap("target"));
}

TEST_F(Output, ANewFileHasThePermissionsThatTheMaskLeaves) {
  ExpectShell("umask 027; " + m_copy + "target");
  EXPECT_EQ(ModeOf("target"), 0640U);
}

TEST_F(Output, PermissionsToRunAsSomebodyElseAreNotCarriedOver) {
  Save(At("target"), "old");
  ASSERT_EQ(::chmod(At("target").c_str(), 06755), 0);
  ExpectDone("copy " + m_map + " target");
  EXPECT_EQ(ModeOf("target"), 0755U);
}

TEST_F(Output, AFileThatItsOwnerMadeReadOnlyIsRefused) {
  Save(At("target"), "old");
  ASSERT_EQ(::chmod(At("target").c_str(), 0444), 0);
  ExpectRefused("copy " + m_map + " target", "target: is read-only");
  EXPECT_EQ(Load(At("target")), "old");
  EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(Output, AFolderIsRefused) {
  fs::create_directory(At("folder"));
  ExpectRefused("copy " + m_map + " folder", "folder: is a folder");
  ExpectRefused("copy " + m_map + " folder/", "folder/: is a folder");
}

TEST_F(Output, ASymbolicLinkStaysAndTheFileThatItNamesIsReplaced) {
  fs::create_directory(At("below"));
  Save(At("below/target"), "old");
  fs::create_symlink("below/target", At("link"));
  fs::create_symlink("link", At("farther"));
  ExpectDone("copy " + m_map + " farther");
  EXPECT_TRUE(fs::is_symlink(At("farther")));
  EXPECT_TRUE(fs::is_symlink(At("link")));
  EXPECT_TRUE(HoldsMap("below/target"));
}

TEST_F(Output, ADanglingLinkIsFollowedToTheFileThatItNames) {
  fs::create_directory(At("below"));
  fs::create_symlink("../made", At("below/link"));
  ExpectDone("copy " + m_map + " below/link");
  EXPECT_TRUE(fs::is_symlink(At("below/link")));
  EXPECT_FALSE(fs::is_symlink(At("made")));
  EXPECT_TRUE(HoldsMap("made"));
}

TEST_F(Output, LinksThatLeadNowhereAreRefused) {
  fs::create_symlink("b", At("a"));
  fs::create_symlink("a", At("b"));
  ExpectRefused("copy " + m_map + " a", "a: cannot be written: Too many levels of symbolic links");
  fs::create_symlink("nowhere/target", At("c"));
  ExpectRefused("copy " + m_map + " c", "c: cannot be written: No such file or directory");
}

TEST_F(Output, WhatIsAppendedToKeepsWhatItHeld) {
  for (const std::string out : {"-", "/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"}) {
    Save(At("app"), "kept");
    ExpectShell(m_copy + out + " >>app");
    EXPECT_TRUE(Load(At("app")) == "kept" + m_content) << out;
  }
  Save(At("app"), "kept");
  fs::create_symlink("/dev/fd/7", At("link"));
  ExpectShell(m_copy + "link 7>>app");
  EXPECT_TRUE(Load(At("app")) == "kept" + m_content);
}

TEST_F(Output, APipeTakesWhatIsWritten) {
  ASSERT_EQ(::mkfifo(At("pipe").c_str(), 0600), 0);
  ExpectShell("cat pipe >got & " + m_copy + "pipe && wait");
  EXPECT_TRUE(HoldsMap("got"));
  EXPECT_TRUE(fs::is_fifo(At("pipe")));
  // A reader that goes away ends the program quietly, as it does every other.
  EXPECT_EQ(RunShell(m_copy + "- | head -c 1 >/dev/null").Err, "");
}

TEST_F(Output, AClosedDescriptorIsAFailure) {
  const std::string reason = ": cannot be written: Bad file descriptor\n";
  EXPECT_EQ(RunShell(m_copy + "- >&-").Err, "qenzor: standard output" + reason);
  EXPECT_EQ(RunShell(m_copy + "/dev/fd/8 8>&-").Err, "qenzor: /dev/fd/8" + reason);
}

TEST_F(Output, AFullDiskIsAFailureThatLeavesTheOldFile) {
  for (const std::string command : {"copy ", "to-xml ", "salvage "})
    ExpectRefused(command + m_map + " /dev/full",
                  "/dev/full: cannot be written: No space left on device");
  const std::string unshare = "unshare -m sh -c '";
  if (!Works("mkdir disk && " + unshare + "mount -t tmpfs tmpfs disk'"))
    GTEST_SKIP() << "file systems cannot be mounted here";
  const Outcome outcome = RunShell(
      "export q; " + unshare + "mount -t tmpfs -o size=128k tmpfs disk && cd disk && echo old >f;" +
      "\"$q\" copy " + m_map + " f; \"$q\" copy " + m_map + " new; cat f; ls -A'");
  EXPECT_EQ(outcome.Out, "old\nf\n");
  EXPECT_EQ(outcome.Err,
            "qenzor: f: cannot be written: No space left on device\n"
            "qenzor: new: cannot be written: No space left on device\n");
}

TEST_F(Output, AFileThatGrowsPastItsLimitIsAFailureThatLeavesTheOldFile) {
  Save(At("target"), "old");
  const Outcome outcome = RunShell("ulimit -f 64; " + m_copy + "target");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_EQ(outcome.Err, "qenzor: target: cannot be written: File too large\n");
  EXPECT_EQ(Load(At("target")), "old");
  EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(Output, AWritableFileInAFolderThatTakesNoNewOneIsOverwritten) {
  fs::create_directory(At("closed"));
  Save(At("closed/target"), m_content + "old");
  if (::geteuid() == 0) {
    ASSERT_EQ(::chown(At("closed/target").c_str(), 65534, 65534), 0);
  }
  ASSERT_EQ(::chmod(At("closed").c_str(), 0555), 0);
  if (!Works(AsUser("test -x $q -a -r " + m_map + " -a ! -w closed")))
    GTEST_SKIP() << "no user here to whom permissions apply and who may run the program";
  ExpectShell(AsUser("$q copy " + m_map + " closed/target"));
  EXPECT_TRUE(HoldsMap("closed/target"));
  const Outcome outcome = RunShell(AsUser("$q copy " + m_map + " closed/new"));
  EXPECT_EQ(outcome.Err, "qenzor: closed/new: cannot be written: Permission denied\n");
  // Too long for the room that there is: the old content stays.
  Save(At("closed/target"), "old");
  EXPECT_EQ(RunShell(AsUser("ulimit -f 64; $q copy " + m_map + " closed/target")).Status, 1);
  EXPECT_EQ(Load(At("closed/target")), "old");
}

TEST_F(Output, SomebodyElsesFileIsRefused) {
  Save(At("target"), "old");
  if (::geteuid() != 0) GTEST_SKIP() << "only root can make one";
  if (!Works(AsUser("test -x $q -a -r " + m_map)))
    GTEST_SKIP() << "no other user may run the program";
  const Outcome outcome = RunShell(AsUser("$q copy " + m_map + " target"));
  EXPECT_EQ(outcome.Err, "qenzor: target: cannot be written: Permission denied\n");
  EXPECT_EQ(Load(At("target")), "old");
}

TEST_F(Output, AFileThatIsMountedInItsPlaceIsOverwritten) {
  Save(At("source"), m_content + "old");
  Save(At("target"), "hidden");
  const std::string mount = "unshare -m sh -c 'mount --bind source target";
  if (!Works(mount + "'")) GTEST_SKIP() << "files cannot be mounted here";
  ExpectShell("export q; " + mount + " && \"$q\" copy " + m_map + " target'");
  EXPECT_TRUE(HoldsMap("source"));
  EXPECT_EQ(Load(At("target")), "hidden");
  EXPECT_EQ(CountFiles(), 2U);
}

TEST_F(Output, RunsSideBySideInOneFolderDoNotDisturbEachOther) {
  ExpectShell("for i in 1 2 3 4 5 6 7 8; do (" + m_copy + "own$i; " + m_copy +
              "shared; \"$q\" copy " + Sample("world.zor") + " shared) & done; wait");
  for (char i = '1'; i <= '8'; ++i) EXPECT_TRUE(HoldsMap(std::string("own") + i));
  const std::string shared = Load(At("shared"));
  EXPECT_TRUE(shared == m_content || shared == Load(Sample("world.zor")));
  EXPECT_EQ(CountFiles(), 9U);
}

}  // namespace

}  // namespace qenzor::testing
