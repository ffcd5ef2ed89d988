#include "Diagnosis.h"

#include "Report.h"
#include "Terminal.h"
#include "handoff/ApplicationLaunch.h"
#include "platform/FileReader.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "platform/PreferredLanguages.h"
#include "platform/SharedDefaults.h"
#include "platform/Workspace.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace velmora::inspect {

namespace {

constexpr std::string_view containerVariable = "VELMORA_GROUP_CONTAINER";
constexpr std::string_view requestExtension = ".json";
constexpr std::size_t stateWidth = 9;
constexpr std::size_t subjectWidth = 13;

RootSource rootSourceOf(const SharedPlaces& places, const SystemProbes& probes) {
  if (places.rootParent == SharedWarpRootParent::applicationSupport) {
    return RootSource::fallback;
  }
  return probes.isContainerSetByEnvironment() ? RootSource::environment
                                              : RootSource::groupContainer;
}

std::optional<std::size_t> waitingRequestsIn(const Text& directory, const FileReader& files) {
  try {
    const std::vector<std::string> names = files.entryNames(directory, unlimitedNameCount);
    return static_cast<std::size_t>(std::ranges::count_if(
        names, [](const std::string& name) { return name.ends_with(requestExtension); }));
  } catch (const PlatformError&) {
    return std::nullopt;
  }
}

HandoffState handoffStateOf(const Text& directory, const FileReader& files,
                            const SystemProbes& probes) {
  HandoffState state;
  state.exists = files.exists(directory);
  state.isWritable = probes.canHoldNewFiles(directory);
  state.waitingRequests = state.exists ? waitingRequestsIn(directory, files) : 0;
  return state;
}

std::string rootJSON(const Diagnosis& diagnosis) {
  JSONObject object;
  object.addText("path", diagnosis.resolution.pathOf(&SharedPlaces::root));
  if (diagnosis.resolution.places.has_value()) {
    object.addText("source", name(diagnosis.rootSource));
  }
  if (diagnosis.resolution.rootFault.has_value()) {
    object.addJSON("error", toJSON(*diagnosis.resolution.rootFault));
  }
  return object.json();
}

std::string mirrorJSON(const Diagnosis& diagnosis) {
  const ResolutionReport& resolution = diagnosis.resolution;
  JSONObject object;
  object.addText("path", diagnosis.resolution.places->mirror);
  object.addFlag("exists", !resolution.isMirrorMissing);
  if (resolution.mirrorFault.has_value()) {
    object.addJSON("error", toJSON(*resolution.mirrorFault));
    return object.json();
  }
  object.addNumber("files", resolution.judged.size() + resolution.refused.size());
  object.addNumber("valid", resolution.judged.size());
  object.addNumber("refused", resolution.refused.size());
  object.addNumber("confirmed", resolution.confirmedCount());
  return object.json();
}

std::string indexJSON(const Diagnosis& diagnosis) {
  const ResolutionReport& resolution = diagnosis.resolution;
  JSONObject object;
  object.addText("path", diagnosis.resolution.places->index);
  object.addFlag("exists", diagnosis.indexExists);
  if (resolution.indexFault.has_value()) {
    object.addJSON("error", toJSON(*resolution.indexFault));
  } else {
    object.addNumber("records", resolution.tombstoneCount);
  }
  return object.json();
}

std::string handoffJSON(const Diagnosis& diagnosis) {
  const HandoffState& handoff = diagnosis.handoff;
  JSONObject object;
  object.addText("path", diagnosis.resolution.places->handoff);
  object.addFlag("exists", handoff.exists);
  object.addFlag("writable", handoff.isWritable);
  if (handoff.waitingRequests.has_value()) {
    object.addNumber("requests", *handoff.waitingRequests);
  }
  return object.json();
}

std::string languageJSON(const Diagnosis& diagnosis) {
  std::vector<std::string> preferred;
  std::ranges::transform(diagnosis.preferredLanguages, std::back_inserter(preferred),
                         [](const Text& tag) { return jsonString(tag); });
  JSONObject object;
  object.addText("choice", rawValue(diagnosis.chosenLanguage));
  object.addJSON("preferred", jsonArray(preferred));
  object.addText("resolved", rawValue(diagnosis.language));
  return object.json();
}

std::string busJSON(const Diagnosis& diagnosis) {
  JSONObject object;
  object.addFlag("reachable", diagnosis.isBusReachable);
  return object.json();
}

std::string applicationJSON(const Diagnosis& diagnosis) {
  JSONObject object;
  object.addFlag("found", diagnosis.application.has_value());
  if (diagnosis.application.has_value()) {
    object.addText("path", *diagnosis.application);
  }
  return object.json();
}

std::string namesJSON(const std::vector<std::string>& names) {
  std::vector<std::string> elements;
  std::ranges::transform(names, std::back_inserter(elements), jsonString);
  return jsonArray(elements);
}

std::string_view reasonOf(RootSource source) {
  switch (source) {
    case RootSource::environment:
      return "where VELMORA_GROUP_CONTAINER puts it";
    case RootSource::groupContainer:
      return "in the group container, which the application has made";
    case RootSource::fallback:
      break;
  }
  return "the application has made no group container";
}

/// The lines of the text, one subject after the other.
class Report {
 public:
  explicit Report(Style style) : style_(style) {}

  void add(Tone tone, std::string_view subject, std::string_view line) {
    text_ += styledWord(stateOf(tone), tone, style_, stateWidth);
    text_.append(subject).append(subjectWidth - subject.size(), ' ').append(line).append("\n");
  }
  void addDetail(std::string_view line) {
    text_.append(stateWidth + subjectWidth, ' ').append(line).append("\n");
  }
  void addLine(std::string_view line) { text_.append(line).append("\n"); }

  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  static std::string_view stateOf(Tone tone) {
    switch (tone) {
      case Tone::good:
        return "ok";
      case Tone::doubtful:
        return "note";
      case Tone::bad:
        break;
    }
    return "problem";
  }

  Style style_;
  std::string text_;
};

void addRoot(Report& report, const Diagnosis& diagnosis) {
  if (diagnosis.resolution.places.has_value()) {
    report.add(Tone::good, "root", displayText(diagnosis.resolution.places->root));
    report.addDetail(reasonOf(diagnosis.rootSource));
  } else {
    report.add(Tone::bad, "root", "there is no place for it");
    if (diagnosis.resolution.rootFault.has_value()) {
      report.addDetail(toText(*diagnosis.resolution.rootFault));
    }
  }
}

void addMirror(Report& report, const Diagnosis& diagnosis) {
  const ResolutionReport& resolution = diagnosis.resolution;
  const std::string path = displayText(diagnosis.resolution.places->mirror);
  if (resolution.mirrorFault.has_value()) {
    report.add(Tone::bad, "mirror", path);
    report.addDetail(toText(*resolution.mirrorFault));
    return;
  }
  report.add(resolution.refused.empty() ? Tone::good : Tone::doubtful, "mirror", path);
  if (resolution.isMirrorMissing) {
    report.addDetail("does not exist: no folder is warped");
    return;
  }
  std::string line = counted(resolution.judged.size() + resolution.refused.size(), "file", "files");
  line.append(": ").append(std::to_string(resolution.judged.size())).append(" valid, ");
  line.append(std::to_string(resolution.refused.size())).append(" refused; ");
  report.addDetail(line.append(std::to_string(resolution.confirmedCount())).append(" confirmed"));
}

void addIndex(Report& report, const Diagnosis& diagnosis) {
  const std::optional<Fault>& fault = diagnosis.resolution.indexFault;
  report.add(fault.has_value() ? Tone::doubtful : Tone::good, "index",
             displayText(diagnosis.resolution.places->index));
  if (fault.has_value()) {
    report.addDetail(toText(*fault));
  } else if (diagnosis.indexExists) {
    report.addDetail(counted(diagnosis.resolution.tombstoneCount, "record", "records"));
  } else {
    report.addDetail("does not exist: no Warp is recorded as destroyed");
  }
}

void addHandoff(Report& report, const Diagnosis& diagnosis) {
  const HandoffState& handoff = diagnosis.handoff;
  report.add(handoff.isWritable ? Tone::good : Tone::bad, "handoff",
             displayText(diagnosis.resolution.places->handoff));
  if (!handoff.isWritable) {
    report.addDetail(handoff.exists ? "requests cannot be left there" : "cannot be made");
  } else if (!handoff.exists) {
    report.addDetail("does not exist yet; can be made");
  } else if (handoff.waitingRequests.has_value()) {
    report.addDetail("writable; " +
                     counted(*handoff.waitingRequests, "request waits", "requests wait"));
  } else {
    report.addDetail("writable; cannot be listed");
  }
}

void addLanguage(Report& report, const Diagnosis& diagnosis) {
  std::string line(rawValue(diagnosis.language));
  if (diagnosis.chosenLanguage != VelmoraLanguage::system) {
    line += ", chosen in the application";
  } else if (diagnosis.preferredLanguages.empty()) {
    line += "; the system prefers none";
  } else {
    line += "; the system prefers";
    for (const Text& tag : diagnosis.preferredLanguages) {
      line.append(" ").append(displayText(tag));
    }
  }
  report.add(Tone::good, "language", line);
}

}  // namespace

std::string name(RootSource source) {
  switch (source) {
    case RootSource::environment:
      return std::string(containerVariable);
    case RootSource::groupContainer:
      return "groupContainer";
    case RootSource::fallback:
      break;
  }
  return "fallback";
}

std::vector<std::string> Diagnosis::obstacles() const {
  std::vector<std::string> names;
  if (!resolution.places.has_value()) {
    names.emplace_back("noRoot");
    return names;
  }
  if (resolution.mirrorFault.has_value()) {
    names.emplace_back("mirrorUnreadable");
  }
  if (!handoff.isWritable) {
    names.emplace_back("handoffNotWritable");
  }
  return names;
}

std::vector<std::string> Diagnosis::notes() const {
  std::vector<std::string> names;
  if (resolution.indexFault.has_value()) {
    names.emplace_back("indexUnusable");
  }
  if (!resolution.refused.empty()) {
    names.emplace_back("invalidManifests");
  }
  if (!isBusReachable) {
    names.emplace_back("busUnreachable");
  }
  if (!application.has_value()) {
    names.emplace_back("applicationNotFound");
  }
  return names;
}

Diagnosis diagnose(const Platform& platform, const SystemProbes& probes) {
  Diagnosis diagnosis;
  diagnosis.resolution = reportOn(resolveWarpedFolders(platform), platform);
  if (const std::optional<SharedPlaces>& places = diagnosis.resolution.places) {
    diagnosis.rootSource = rootSourceOf(*places, probes);
    diagnosis.indexExists = platform.fileReader.exists(places->index);
    diagnosis.handoff = handoffStateOf(places->handoff, platform.fileReader, probes);
  }
  diagnosis.chosenLanguage = selectedLanguage(platform.defaults);
  diagnosis.preferredLanguages = platform.languages.preferredLanguages();
  diagnosis.language = resolvedLanguage(diagnosis.chosenLanguage, diagnosis.preferredLanguages);
  diagnosis.isBusReachable = probes.isBusReachable();
  diagnosis.application = platform.workspace.applicationLocation(mainApplicationIdentifier);
  return diagnosis;
}

std::string toJSON(const Diagnosis& diagnosis) {
  JSONObject object;
  object.addFlag("ready", diagnosis.obstacles().empty());
  object.addJSON("obstacles", namesJSON(diagnosis.obstacles()));
  object.addJSON("notes", namesJSON(diagnosis.notes()));
  object.addJSON("root", rootJSON(diagnosis));
  if (diagnosis.resolution.places.has_value()) {
    object.addJSON("mirror", mirrorJSON(diagnosis));
    object.addJSON("index", indexJSON(diagnosis));
    object.addJSON("handoff", handoffJSON(diagnosis));
  }
  object.addJSON("language", languageJSON(diagnosis));
  object.addJSON("bus", busJSON(diagnosis));
  object.addJSON("application", applicationJSON(diagnosis));
  return object.json();
}

std::string toText(const Diagnosis& diagnosis, Style style) {
  Report report(style);
  addRoot(report, diagnosis);
  if (diagnosis.resolution.places.has_value()) {
    addMirror(report, diagnosis);
    addIndex(report, diagnosis);
    addHandoff(report, diagnosis);
  }
  addLanguage(report, diagnosis);
  if (diagnosis.isBusReachable) {
    report.add(Tone::good, "session bus", "reachable");
  } else {
    report.add(Tone::doubtful, "session bus",
               "not reachable: a running application is not told of a request");
  }
  if (diagnosis.application.has_value()) {
    report.add(Tone::good, "application", displayText(*diagnosis.application));
  } else {
    report.add(Tone::doubtful, "application", "not found: requests wait until it runs");
  }
  report.addLine(diagnosis.obstacles().empty() ? "Nothing stands in the way of an action."
                                               : "The actions cannot work as they should.");
  return report.text();
}

}  // namespace velmora::inspect
