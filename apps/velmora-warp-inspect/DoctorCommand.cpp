#include "DoctorCommand.h"

#include "EnumTable.h"
#include "common/DisplayText.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

namespace velmora::inspect {

namespace {

constexpr std::size_t stateWidth = 9;
constexpr std::size_t subjectWidth = 13;

struct RootSourceWords {
  RootSource value;
  std::string_view name;
  std::string_view reason;
};

constexpr RootSourceWords rootSourceWords[] = {
    {RootSource::environment, "VELMORA_GROUP_CONTAINER", "where VELMORA_GROUP_CONTAINER puts it"},
    {RootSource::groupContainer, "groupContainer",
     "in the group container, which the application has made"},
    {RootSource::fallback, "fallback", "the application has made no group container"},
};

/// The state at the beginning of a subject's line.
struct State {
  std::string_view word;
  Tone tone;
};

constexpr State ok = {"ok", Tone::good};
constexpr State note = {"note", Tone::doubtful};
constexpr State problem = {"problem", Tone::bad};

template <class String>
std::string textsJSON(const std::vector<String>& texts) {
  std::vector<std::string> elements;
  std::ranges::transform(texts, std::back_inserter(elements), jsonString);
  return jsonArray(elements);
}

void addError(JSONObject& object, const std::optional<Fault>& fault) {
  if (fault.has_value()) {
    object.addJSON("error", toJSON(*fault));
  }
}

std::string rootJSON(const Diagnosis& diagnosis) {
  JSONObject object;
  object.addText("path", diagnosis.resolution.pathOf(&SharedPlaces::root));
  if (diagnosis.resolution.places.has_value()) {
    object.addText("source", rowFor(rootSourceWords, diagnosis.rootSource).name);
  }
  addError(object, diagnosis.containerFault);
  addError(object, diagnosis.resolution.rootFault);
  return object.json();
}

std::string mirrorJSON(const Diagnosis& diagnosis) {
  const ResolutionReport& resolution = diagnosis.resolution;
  JSONObject object;
  object.addText("path", resolution.places->mirror);
  object.addFlag("exists", resolution.mirrorExists);
  if (resolution.mirrorFault.has_value()) {
    addError(object, resolution.mirrorFault);
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
  object.addText("path", resolution.places->index);
  object.addFlag("exists", resolution.indexExists);
  addError(object, resolution.indexFault);
  if (!resolution.indexFault.has_value()) {
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
  addError(object, handoff.fault);
  return object.json();
}

std::string languageJSON(const Diagnosis& diagnosis) {
  JSONObject object;
  object.addText("choice", rawValue(diagnosis.chosenLanguage));
  object.addJSON("preferred", textsJSON(diagnosis.preferredLanguages));
  object.addText("resolved", rawValue(diagnosis.language));
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

std::string subjectLine(const State& state, std::string_view subject, std::string_view line,
                        Style style) {
  return styledWord(state.word, state.tone, style, stateWidth)
      .append(subject)
      .append(subjectWidth - subject.size(), ' ')
      .append(line)
      .append("\n");
}

std::string detailLine(std::string_view line) {
  return indentedLine(stateWidth + subjectWidth, line);
}

std::string rootText(const Diagnosis& diagnosis, Style style) {
  const ResolutionReport& resolution = diagnosis.resolution;
  if (!resolution.places.has_value()) {
    return subjectLine(problem, "root", noRootWords, style) +
           detailLine(toText(resolution.rootFault.value()));
  }
  const std::string path = displayText(resolution.places->root);
  if (diagnosis.containerFault.has_value()) {
    return subjectLine(note, "root", path, style) +
           detailLine("the group container cannot be looked at: " +
                      toText(*diagnosis.containerFault));
  }
  return subjectLine(ok, "root", path, style) +
         detailLine(rowFor(rootSourceWords, diagnosis.rootSource).reason);
}

std::string mirrorText(const ResolutionReport& resolution, Style style) {
  const State& usable = resolution.refused.empty() ? ok : note;
  return subjectLine(resolution.mirrorFault.has_value() ? problem : usable, "mirror",
                     displayText(resolution.places->mirror), style) +
         detailLine(mirrorWords(resolution));
}

std::string indexText(const ResolutionReport& resolution, Style style) {
  return subjectLine(resolution.indexFault.has_value() ? note : ok, "index",
                     displayText(resolution.places->index), style) +
         detailLine(indexWords(resolution));
}

std::string handoffDetail(const HandoffState& handoff) {
  if (!handoff.exists.has_value()) {
    return toText(handoff.fault.value());
  }
  if (!handoff.isWritable) {
    return *handoff.exists ? "requests cannot be left there" : "cannot be made";
  }
  if (!*handoff.exists) {
    return "does not exist yet; can be made";
  }
  return handoff.waitingRequests.has_value()
             ? "writable; " + counted(*handoff.waitingRequests, "request waits", "requests wait")
             : "writable; cannot be listed: " + toText(handoff.fault.value());
}

std::string handoffText(const Diagnosis& diagnosis, Style style) {
  return subjectLine(diagnosis.handoff.isWritable ? ok : problem, "handoff",
                     displayText(diagnosis.resolution.places->handoff), style) +
         detailLine(handoffDetail(diagnosis.handoff));
}

std::string languageText(const Diagnosis& diagnosis, Style style) {
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
  return subjectLine(ok, "language", line, style);
}

std::string busText(const Diagnosis& diagnosis, Style style) {
  return diagnosis.isBusReachable
             ? subjectLine(ok, "session bus", "reachable", style)
             : subjectLine(note, "session bus",
                           "not reachable: a running application is not told of a request", style);
}

std::string applicationText(const Diagnosis& diagnosis, Style style) {
  return diagnosis.application.has_value()
             ? subjectLine(ok, "application", displayText(*diagnosis.application), style)
             : subjectLine(note, "application", "not found: requests wait until it runs", style);
}

}  // namespace

std::string toJSON(const Diagnosis& diagnosis) {
  JSONObject bus;
  bus.addFlag("reachable", diagnosis.isBusReachable);
  JSONObject object;
  object.addFlag("ready", diagnosis.obstacles().empty());
  object.addJSON("obstacles", textsJSON(diagnosis.obstacles()));
  object.addJSON("notes", textsJSON(diagnosis.notes()));
  object.addJSON("root", rootJSON(diagnosis));
  if (diagnosis.resolution.places.has_value()) {
    object.addJSON("mirror", mirrorJSON(diagnosis));
    object.addJSON("index", indexJSON(diagnosis));
    object.addJSON("handoff", handoffJSON(diagnosis));
  }
  object.addJSON("language", languageJSON(diagnosis));
  object.addJSON("bus", bus.json());
  object.addJSON("application", applicationJSON(diagnosis));
  return object.json();
}

std::string toText(const Diagnosis& diagnosis, Style style) {
  std::string text = rootText(diagnosis, style);
  if (diagnosis.resolution.places.has_value()) {
    text += mirrorText(diagnosis.resolution, style);
    text += indexText(diagnosis.resolution, style);
    text += handoffText(diagnosis, style);
  }
  text += languageText(diagnosis, style);
  text += busText(diagnosis, style);
  text += applicationText(diagnosis, style);
  return text + (diagnosis.obstacles().empty() ? "Nothing stands in the way of an action.\n"
                                               : "The actions cannot work as they should.\n");
}

}  // namespace velmora::inspect
