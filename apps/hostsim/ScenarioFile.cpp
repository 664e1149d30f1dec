#include "ScenarioFile.h"

#include <algorithm>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <map>
#include <sstream>
#include <utility>

#include "base/Text.h"
#include "text/JSONParser.h"

namespace qx {
namespace {

enum TArgs : std::uint32_t {
  kNone = 0,
  kPoint = 1 << 0,  // "x","y" or "page"
  kStride = 1 << 1,
  kNotches = 1 << 2,
  kPage = 1 << 3,
  kRange = 1 << 4,  // "first","last"
  kGroup = 1 << 5,
  kMs = 1 << 6,
  kText = 1 << 7,
  kFromTo = 1 << 8,
  kCapture = 1 << 9,       // "name", "caption"?, "golden"?
  kCabinetDrag = 1 << 10,  // "event", a point but for "hide", "offset"?, "source"?, "dest"?, ...
};

struct TStepSpec {
  const char* Name;
  TStepKind Kind;
  std::uint32_t Args;
};

constexpr TStepSpec kSteps[] = {
    {"prepare-host", TStepKind::PrepareHost, kNone},
    {"create-strip", TStepKind::CreateStrip, kNone},
    {"destroy-strip", TStepKind::DestroyStrip, kNone},
    {"select", TStepKind::Select, kPage},
    {"add-page", TStepKind::AddPage, kNone},
    {"add-pages", TStepKind::AddPages, kRange},
    {"close", TStepKind::Close, kPage},
    {"fresh-thumbnails", TStepKind::FreshThumbnails, kNone},
    {"switch-group", TStepKind::SwitchGroup, kGroup},
    {"open-cabinet", TStepKind::OpenCabinet, kNone},
    {"close-cabinet", TStepKind::CloseCabinet, kNone},
    {"cabinet-drag", TStepKind::CabinetDrag, kCabinetDrag},
    {"select-text", TStepKind::SelectText, kText},
    {"move", TStepKind::Move, kPoint},
    {"glide", TStepKind::Glide, kPoint | kStride},
    {"press", TStepKind::Press, kPoint},
    {"release", TStepKind::Release, kPoint},
    {"wheel", TStepKind::Wheel, kPoint | kNotches},
    {"touch-down", TStepKind::TouchDown, kPoint},
    {"touch-move", TStepKind::TouchMove, kPoint},
    {"touch-up", TStepKind::TouchUp, kPoint},
    {"swipe", TStepKind::Swipe, kFromTo | kStride},
    {"wait", TStepKind::Wait, kMs},
    {"capture", TStepKind::Capture, kCapture},
};

// The keys each argument group allows; the first of a group's required keys is named
// when it is missing.
std::vector<std::u16string> AllowedKeys(std::uint32_t args) {
  std::vector<std::u16string> keys{u"do"};
  if (args & kPoint) keys.insert(keys.end(), {u"x", u"y", u"page"});
  if (args & kStride) keys.push_back(u"stride");
  if (args & kNotches) keys.push_back(u"notches");
  if (args & kPage) keys.push_back(u"page");
  if (args & kRange) keys.insert(keys.end(), {u"first", u"last"});
  if (args & kGroup) keys.push_back(u"group");
  if (args & kMs) keys.push_back(u"ms");
  if (args & kText) keys.push_back(u"text");
  if (args & kFromTo) keys.insert(keys.end(), {u"from", u"to"});
  if (args & kCapture) keys.insert(keys.end(), {u"name", u"caption", u"golden"});
  if (args & kCabinetDrag)
    keys.insert(keys.end(),
                {u"event", u"x", u"y", u"page", u"offset", u"source", u"dest", u"id", u"cancel", u"images"});
  return keys;
}

// Messages are built by appending only: prepending to a temporary string trips a false
// overlap warning in some GCCs.
std::string Join(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (std::string_view part : parts) text += part;
  return text;
}

std::string Quoted(std::u16string_view key) { return Join({"\"", ToUtf8(key), "\""}); }

struct TBadFile {
  std::int32_t Line;
  std::int32_t Column;
  std::string Message;
};

// Where each object and array of the parsed text opened.
using TPositions = std::map<const IJSONValue*, std::pair<std::int32_t, std::int32_t>>;

class TStepReader {
 public:
  TStepReader(IJSONObject& object, std::string name, std::int32_t line, std::int32_t column)
      : FObject(object), FName(std::move(name)), FLine(line), FColumn(column) {}

  [[noreturn]] void Fail(const std::string& message) const {
    throw TBadFile{FLine, FColumn, Join({"step \"", FName, "\": ", message})};
  }

  bool Has(std::u16string_view key) const { return FObject.Exists(key); }

  int Int(std::u16string_view key, int low, int high) const {
    ComPtr<IJSONValue> value = FObject.GetValue(key);
    if (!value) Fail(Join({Quoted(key), " is missing"}));
    if (!value->IsNumber() || value->AsNumber()->GetIsFloat())
      Fail(Join({Quoted(key), " must be a whole number"}));
    const std::int64_t number = value->GetIntValue();
    if (number < low || number > high)
      Fail(Join({Quoted(key), " must be from ", std::to_string(low), " to ", std::to_string(high)}));
    return static_cast<int>(number);
  }

  std::u16string Text(std::u16string_view key) const {
    ComPtr<IJSONValue> value = FObject.GetValue(key);
    if (!value) Fail(Join({Quoted(key), " is missing"}));
    if (!value->IsString()) Fail(Join({Quoted(key), " must be a string"}));
    return value->GetStringValue();
  }

  bool Bool(std::u16string_view key) const {
    ComPtr<IJSONValue> value = FObject.GetValue(key);
    if (!value) Fail(Join({Quoted(key), " is missing"}));
    if (!value->IsBool()) Fail(Join({Quoted(key), " must be true or false"}));
    return value->GetBoolValue();
  }

  std::vector<int> Ints(std::u16string_view key, int low, int high, std::size_t most) const {
    ComPtr<IJSONValue> value = FObject.GetValue(key);
    if (!value) Fail(Join({Quoted(key), " is missing"}));
    ComPtr<IJSONArray> array = value->AsArray();
    const std::string wanted =
        Join({Quoted(key), " must be a list of at most ", std::to_string(most), " whole numbers from ",
              std::to_string(low), " to ", std::to_string(high)});
    if (!array || static_cast<std::size_t>(array->GetCount()) > most) Fail(wanted);
    std::vector<int> numbers;
    for (std::int32_t i = 0; i < array->GetCount(); ++i) {
      ComPtr<IJSONValue> item = array->GetItem(i);
      if (!item->IsNumber() || item->AsNumber()->GetIsFloat() || item->GetIntValue() < low ||
          item->GetIntValue() > high)
        Fail(wanted);
      numbers.push_back(static_cast<int>(item->GetIntValue()));
    }
    return numbers;
  }

  TPoint Pair(std::u16string_view key) const {
    ComPtr<IJSONValue> value = FObject.GetValue(key);
    if (!value) Fail(Join({Quoted(key), " is missing"}));
    ComPtr<IJSONArray> array = value->AsArray();
    if (!array || array->GetCount() != 2) Fail(Join({Quoted(key), " must be [x, y]"}));
    TPoint point{};
    for (int i = 0; i < 2; ++i) {
      ComPtr<IJSONValue> item = array->GetItem(i);
      if (!item->IsNumber() || item->AsNumber()->GetIsFloat())
        Fail(Join({Quoted(key), " must be [x, y] in whole pixels"}));
      (i == 0 ? point.X : point.Y) = static_cast<int>(item->GetIntValue());
    }
    return point;
  }

  TScenarioPoint Point() const {
    TScenarioPoint point;
    if (Has(u"page")) {
      if (Has(u"x") || Has(u"y")) Fail("takes \"x\",\"y\" or \"page\", not both");
      point.Page = Int(u"page", 1, kMaxPage);
      return point;
    }
    if (!Has(u"x") && !Has(u"y")) Fail("\"x\",\"y\" or \"page\" is missing");
    point.At = {Int(u"x", -kMaxPixel, kMaxPixel), Int(u"y", -kMaxPixel, kMaxPixel)};
    return point;
  }

  static constexpr int kMaxPage = 9999;
  static constexpr int kMaxPixel = 100000;

 private:
  IJSONObject& FObject;
  std::string FName;
  std::int32_t FLine;
  std::int32_t FColumn;
};

constexpr std::string_view kDragEvents[] = {"dragstart", "drag", "drop", "dragend", "hide"};
constexpr std::size_t kMostDragImages = 5;

void ReadCabinetDrag(const TStepReader& in, TScenarioStep& step) {
  TCabinetDragArgs& drag = step.CabinetDrag;
  drag.Event = ToUtf8(in.Text(u"event"));
  if (std::find(std::begin(kDragEvents), std::end(kDragEvents), drag.Event) == std::end(kDragEvents))
    in.Fail("\"event\" must be \"dragstart\", \"drag\", \"drop\", \"dragend\" or \"hide\"");
  // "hide" is no pointer event: the page only takes the window away.
  drag.HasPointer = drag.Event != "hide" || in.Has(u"x") || in.Has(u"y") || in.Has(u"page");
  if (drag.HasPointer) step.Point = in.Point();
  if (in.Has(u"offset")) drag.Offset = in.Pair(u"offset");
  if (in.Has(u"source")) drag.Source = in.Text(u"source");
  if (in.Has(u"dest")) drag.Dest = in.Text(u"dest");
  if (in.Has(u"id")) drag.Id = in.Text(u"id");
  if (in.Has(u"cancel")) drag.Cancel = in.Bool(u"cancel");
  if (in.Has(u"images")) drag.ImagePages = in.Ints(u"images", 1, TStepReader::kMaxPage, kMostDragImages);
}

// A step that is no object has no place of its own: the list's is given.
TScenarioStep ReadStep(IJSONValue& value, std::size_t index, const TPositions& positions, IJSONValue* list) {
  auto where = positions.find(&value);
  if (where == positions.end()) where = positions.find(list);
  const std::int32_t line = where != positions.end() ? where->second.first : 0;
  const std::int32_t column = where != positions.end() ? where->second.second : 0;
  ComPtr<IJSONObject> object = value.AsObject();
  if (!object) throw TBadFile{line, column, Join({"step ", std::to_string(index + 1), " is not an object"})};
  ComPtr<IJSONValue> name = object->GetValue(u"do");
  if (!name || !name->IsString())
    throw TBadFile{line, column,
                   Join({"step ", std::to_string(index + 1), " has no \"do\" naming what it does"})};
  const std::string stepName = ToUtf8(name->GetStringValue());
  const auto spec = std::find_if(std::begin(kSteps), std::end(kSteps),
                                 [&](const TStepSpec& s) { return stepName == s.Name; });
  if (spec == std::end(kSteps)) throw TBadFile{line, column, Join({"unknown step \"", stepName, "\""})};

  const TStepReader in(*object, stepName, line, column);
  const std::vector<std::u16string> allowed = AllowedKeys(spec->Args);
  for (std::int32_t i = 0; i < object->GetCount(); ++i)
    if (std::find(allowed.begin(), allowed.end(), object->GetName(i)) == allowed.end())
      in.Fail(Join({"unknown key ", Quoted(object->GetName(i))}));

  TScenarioStep step;
  step.Kind = spec->Kind;
  step.Name = stepName;
  step.Line = line;
  step.Column = column;
  const std::uint32_t args = spec->Args;
  if (args & kPoint) step.Point = in.Point();
  if ((args & kStride) && in.Has(u"stride")) step.Stride = in.Int(u"stride", 1, 1000);
  if (args & kNotches) step.Notches = in.Int(u"notches", -100, 100);
  if (args & kPage) step.Page = in.Int(u"page", 1, TStepReader::kMaxPage);
  if (args & kRange) {
    step.First = in.Int(u"first", 1, TStepReader::kMaxPage);
    step.Last = in.Int(u"last", step.First, TStepReader::kMaxPage);
  }
  if (args & kGroup) step.Group = in.Int(u"group", 0, 1000);
  if (args & kMs) step.Milliseconds = static_cast<std::uint32_t>(in.Int(u"ms", 0, 3600000));
  if (args & kText) step.Text = in.Text(u"text");
  if (args & kFromTo) {
    step.From = in.Pair(u"from");
    step.To = in.Pair(u"to");
  }
  if (args & kCapture) {
    step.CaptureName = ToUtf8(in.Text(u"name"));
    if (step.CaptureName.empty() || step.CaptureName.find_first_of("/\\:") != std::string::npos)
      in.Fail("\"name\" must be a plain file name");
    if (in.Has(u"caption")) step.Caption = ToUtf8(in.Text(u"caption"));
    if (in.Has(u"golden")) step.Golden = ToUtf8(in.Text(u"golden"));
  }
  if (args & kCabinetDrag) ReadCabinetDrag(in, step);
  return step;
}

TScenario ReadTree(IJSONValue& root, const TPositions& positions) {
  ComPtr<IJSONObject> object = root.AsObject();
  if (!object) throw TBadFile{1, 1, "a scenario is one object with \"description\" and \"steps\""};
  for (std::int32_t i = 0; i < object->GetCount(); ++i) {
    const std::u16string key = object->GetName(i);
    if (key != u"description" && key != u"steps" && key != u"input-ms")
      throw TBadFile{1, 1,
                     Join({"unknown key ", Quoted(key),
                           " (a scenario has \"description\", \"steps\" and \"input-ms\")"})};
  }
  TScenario scenario;
  ComPtr<IJSONValue> description = object->GetValue(u"description");
  if (description && !description->IsString()) throw TBadFile{1, 1, "\"description\" must be a string"};
  if (description) scenario.Description = ToUtf8(description->GetStringValue());
  if (ComPtr<IJSONValue> inputMs = object->GetValue(u"input-ms")) {
    if (!inputMs->IsNumber() || inputMs->AsNumber()->GetIsFloat() || inputMs->GetIntValue() < 0 ||
        inputMs->GetIntValue() > 1000)
      throw TBadFile{1, 1, "\"input-ms\" must be a whole number from 0 to 1000"};
    scenario.InputMs = static_cast<std::uint32_t>(inputMs->GetIntValue());
  }
  ComPtr<IJSONArray> steps = object->GetArray(u"steps");
  if (!steps) throw TBadFile{1, 1, "\"steps\" is missing or not a list"};
  for (std::int32_t i = 0; i < steps->GetCount(); ++i)
    scenario.Steps.push_back(
        ReadStep(*steps->GetItem(i), static_cast<std::size_t>(i), positions, steps.get()));
  return scenario;
}

TScenarioRead Failure(std::int32_t line, std::int32_t column, const std::string& message) {
  TScenarioRead read;
  read.Line = line;
  read.Column = column;
  read.Error = Join({"line ", std::to_string(line), " column ", std::to_string(column), ": ", message});
  return read;
}

}  // namespace

TScenarioRead ReadScenario(std::string_view utf8Text) {
  if (utf8Text.starts_with("\xEF\xBB\xBF")) utf8Text.remove_prefix(3);
  const std::u16string text = FromUtf8(utf8Text);
  TPositions positions;
  TJSONParseContext context(text);
  context.SetContainerObserver([&](IJSONValue* container, std::int32_t line, std::int32_t column) {
    positions[container] = {line, column};
  });
  ComPtr<IJSONValue> root;
  try {
    TJSONParser::ParseJSONText(context, root);
  } catch (const EJsonParseError& error) {
    // The library's own message leads with the place; ours carries it the same way for every error.
    std::string message = ToUtf8(error.Message());
    const std::size_t colon = message.find(": ");
    if (colon != std::string::npos) message.erase(0, colon + 2);
    return Failure(error.Line(), error.Column(), message);
  }
  try {
    TScenarioRead read;
    read.Scenario = ReadTree(*root, positions);
    return read;
  } catch (const TBadFile& bad) {
    return Failure(bad.Line, bad.Column, bad.Message);
  }
}

TScenarioRead ReadScenarioFile(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  TScenarioRead read;
  if (!in) {
    read.Error = Join({file.string(), ": cannot be read"});
    return read;
  }
  std::ostringstream text;
  text << in.rdbuf();
  read = ReadScenario(text.str());
  if (!read.Scenario) read.Error = Join({file.string(), ": ", read.Error});
  return read;
}

}  // namespace qx
