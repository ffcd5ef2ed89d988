// What every test of the built program starts from: a home, and the program run in it.
#pragma once

#include "tests/process/Expectations.h"
#include "tests/process/ScratchHome.h"
#include "tests/support/BusPeer.h"
#include "tests/support/Buses.h"
#include "tests/support/LaunchedApplication.h"
#include "tests/support/Process.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <sys/types.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace velmora::process {

/// The user who owns nothing.
inline constexpr unsigned nobody = 65534;

class ProcessTest : public ::testing::Test {
 protected:
  ProcessTest();

  /// Runs the program with these arguments, by `command` otherwise: from the home's directory, in
  /// `command.environment`.
  Outcome run(const std::vector<std::string>& arguments);

  /// What the last run has made below the home. Empty when something has gone as well.
  std::set<std::string> made() const;
  /// The processes that the last run has left behind.
  std::set<pid_t> leftRunning() const;

  /// The only request in the container, of which the last run has made nothing else. Reports a
  /// failure of the test, and returns an empty request, when that is not so.
  Request onlyRequest();

  /// The request was handed over without a word.
  void expectCompleted(const Outcome& outcome);
  /// The same of a request for these folders alone.
  void expectHandedOver(const Outcome& outcome, const std::vector<std::string>& folders);
  /// Nothing was written, signalled by a new process, or launched, and `error` is all that was
  /// said.
  void expectCancelled(const Outcome& outcome, int exitStatus, const std::string& error);

  /// Lets the program find that bus.
  void setBus(const std::string& address) {
    command.environment["DBUS_SESSION_BUS_ADDRESS"] = address;
  }

  /// Makes the application known to the desktop: a desktop entry with these further lines.
  void installApplication(const std::string& lines);
  /// The application that the last run has started, and that is all that it has left running; null
  /// when that is not so, which is a failure of the test.
  std::unique_ptr<LaunchedApplication> launched();
  /// A line of a desktop entry: starts an application that reports to `launches`.
  std::string execLine(const std::string& arguments = "") const {
    return "Exec=" + applicationCommand(launches, arguments) + "\n";
  }

  /// Lets a copy of the program, all that this user is sure to reach, run as that user.
  void runAs(unsigned user);

  ScratchHome home;
  Command command;
  Listener launches{home.runtimeDirectory() / "launches"};

 private:
  /// For programs that run as another user than the test's.
  ScratchDirectory countsOfOthers_;
  std::set<std::string> listingBefore_;
  std::set<pid_t> childrenBefore_;
};

}  // namespace velmora::process
