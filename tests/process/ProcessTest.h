// The fixture of tests of the built program: a home, and the program that runs in it.
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

/// A user who owns nothing.
inline constexpr unsigned nobody = 65534;

class ProcessTest : public ::testing::Test {
 protected:
  ProcessTest();

  /// Runs the program with these arguments and otherwise as `command` says: in the home's directory
  /// with `command.environment`.
  Outcome run(const std::vector<std::string>& arguments);

  /// The paths that the last run has created below the home. Empty when a path was removed.
  std::set<std::string> made() const;
  /// The processes of the last run that still run.
  std::set<pid_t> leftRunning() const;

  /// The only request in the container. Expects that the last run has created nothing else there;
  /// otherwise it fails the test and returns an empty request.
  Request onlyRequest();

  /// Expects a successful request without output.
  void expectCompleted(const Outcome& outcome);
  /// Expects a successful request for exactly these folders.
  void expectHandedOver(const Outcome& outcome, const std::vector<std::string>& folders);
  /// Expects that nothing was written, that no new process runs, and that standard error is
  /// `error`.
  void expectCancelled(const Outcome& outcome, int exitStatus, const std::string& error);

  /// Lets the program find this bus.
  void setBus(const std::string& address) {
    command.environment["DBUS_SESSION_BUS_ADDRESS"] = address;
  }

  /// Installs the application with a desktop entry that has these further lines.
  void installApplication(const std::string& lines);
  /// The application that the last run has started. Fails the test and returns null when there is
  /// none, or when another process runs.
  std::unique_ptr<LaunchedApplication> launched();
  /// A line of a desktop entry that starts an application. The application reports to `launches`.
  std::string execLine(const std::string& arguments = "") const {
    return "Exec=" + applicationCommand(launches, arguments) + "\n";
  }

  /// Runs a copy of the program as `user`, who may be unable to reach the built one.
  void runAs(unsigned user);

  ScratchHome home;
  Command command;
  Listener launches{home.runtimeDirectory() / "launches"};

 private:
  /// The coverage counts of programs that run as another user.
  ScratchDirectory countsOfOthers_;
  std::set<std::string> listingBefore_;
  std::set<pid_t> childrenBefore_;
};

}  // namespace velmora::process
