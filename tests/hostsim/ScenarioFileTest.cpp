#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "ScenarioFile.h"

namespace qx {
namespace {

TEST(ScenarioFile, ReadsEveryKindOfArgument) {
  const TScenarioRead read = ReadScenario(R"({
  "description": "all kinds",
  "input-ms": 0,
  "steps": [
    {"do": "add-pages", "first": 9, "last": 12},
    {"do": "press", "page": 5},
    {"do": "glide", "x": 10, "y": -4},
    {"do": "wheel", "x": 3, "y": 4, "notches": -2},
    {"do": "swipe", "from": [630, 54], "to": [230, 54], "stride": 25},
    {"do": "select-text", "text": "lighthouse"},
    {"do": "capture", "name": "one", "golden": "golden/one.png"},
    {"do": "cabinet-drag", "event": "dragstart", "x": 600, "y": 150, "offset": [20, 10], "images": [2, 3],
     "source": "archives", "dest": "opentabs", "id": "tab-2", "cancel": true},
    {"do": "cabinet-drag", "event": "hide"}
  ]
})");
  ASSERT_TRUE(read.Scenario) << read.Error;
  const auto& steps = read.Scenario->Steps;
  ASSERT_EQ(steps.size(), 9u);
  EXPECT_EQ(read.Scenario->Description, "all kinds");
  EXPECT_EQ(steps[0].Kind, TStepKind::AddPages);
  EXPECT_EQ(steps[0].First, 9);
  EXPECT_EQ(steps[0].Last, 12);
  EXPECT_EQ(read.Scenario->InputMs, 0u);
  EXPECT_EQ(steps[0].Line, 5);
  EXPECT_EQ(steps[0].Column, 5);
  EXPECT_EQ(steps[1].Point.Page, 5);
  EXPECT_EQ(steps[2].Point.Page, 0);
  EXPECT_EQ(steps[2].Point.At.X, 10);
  EXPECT_EQ(steps[2].Point.At.Y, -4);
  EXPECT_EQ(steps[2].Stride, kDefaultStride);
  EXPECT_EQ(steps[3].Notches, -2);
  EXPECT_EQ(steps[4].From.X, 630);
  EXPECT_EQ(steps[4].To.X, 230);
  EXPECT_EQ(steps[4].Stride, 25);
  EXPECT_EQ(steps[5].Text, u"lighthouse");
  EXPECT_EQ(steps[6].CaptureName, "one");
  EXPECT_EQ(steps[6].Golden, "golden/one.png");
  EXPECT_TRUE(steps[6].Caption.empty());
  const TCabinetDragArgs& drag = steps[7].CabinetDrag;
  EXPECT_EQ(steps[7].Kind, TStepKind::CabinetDrag);
  EXPECT_EQ(drag.Event, "dragstart");
  EXPECT_TRUE(drag.HasPointer);
  EXPECT_EQ(steps[7].Point.At.X, 600);
  EXPECT_EQ(drag.Offset, (TPoint{20, 10}));
  EXPECT_EQ(drag.ImagePages, (std::vector<int>{2, 3}));
  EXPECT_EQ(drag.Source, u"archives");
  EXPECT_EQ(drag.Dest, u"opentabs");
  EXPECT_EQ(drag.Id, u"tab-2");
  EXPECT_TRUE(drag.Cancel);
  // "hide" needs no pointer; the others default to a drag of open tabs over no target.
  EXPECT_FALSE(steps[8].CabinetDrag.HasPointer);
  EXPECT_FALSE(steps[8].CabinetDrag.Offset);
  EXPECT_EQ(steps[8].CabinetDrag.Source, u"opentabs");
  EXPECT_EQ(steps[8].CabinetDrag.Dest, u"none");
  EXPECT_FALSE(steps[8].CabinetDrag.Cancel);
}

struct TBadCase {
  const char* Text;
  const char* Says;
  int Line;
  int Column;
};

TEST(ScenarioFile, BadFilesSayWhatAndWhere) {
  const TBadCase cases[] = {
      // A missing comma between two steps: the parser stops where the second begins.
      {"{\"steps\": [\n  {\"do\": \"add-page\"}\n  {\"do\": \"add-page\"}\n]}", "Expecting", 3, 3},
      {"{\"steps\": [\n  {\"do\": \"add-page\"},\n    {\"do\": \"jump\", \"x\": 1}\n]}",
       "unknown step \"jump\"", 3, 5},
      {"{\"steps\": [{\"do\": \"wait\"}]}", "step \"wait\": \"ms\" is missing", 1, 12},
      {"{\"steps\": [{\"do\": \"press\", \"y\": 3}]}", "\"x\" is missing", 1, 12},
      {"{\"steps\": [{\"do\": \"press\"}]}", "\"x\",\"y\" or \"page\" is missing", 1, 12},
      {"{\"steps\": [{\"do\": \"press\", \"page\": 2, \"x\": 1}]}", "not both", 1, 12},
      {"{\"steps\": [{\"do\": \"wait\", \"ms\": \"10\"}]}", "\"ms\" must be a whole number", 1, 12},
      {"{\"steps\": [{\"do\": \"wait\", \"ms\": 10, \"delay\": 3}]}", "unknown key \"delay\"", 1, 12},
      {"{\"steps\": [{\"do\": \"swipe\", \"from\": [1], \"to\": [2, 3]}]}", "\"from\" must be [x, y]", 1, 12},
      {"{\"steps\": [{\"do\": \"capture\", \"name\": \"../up\"}]}", "plain file name", 1, 12},
      {"{\"steps\": [{\"do\": \"add-pages\", \"first\": 9, \"last\": 3}]}", "\"last\" must be from 9", 1, 12},
      {"{\"steps\": [{\"do\": \"cabinet-drag\", \"x\": 1, \"y\": 2}]}", "\"event\" is missing", 1, 12},
      {"{\"steps\": [{\"do\": \"cabinet-drag\", \"event\": \"grab\", \"x\": 1, \"y\": 2}]}",
       "\"event\" must be \"dragstart\"", 1, 12},
      {"{\"steps\": [{\"do\": \"cabinet-drag\", \"event\": \"drag\"}]}", "\"x\",\"y\" or \"page\" is missing",
       1, 12},
      {"{\"steps\": [{\"do\": \"cabinet-drag\", \"event\": \"drop\", \"x\": 1, \"y\": 2, \"cancel\": 1}]}",
       "\"cancel\" must be true or false", 1, 12},
      {"{\"steps\": [{\"do\": \"cabinet-drag\", \"event\": \"dragstart\", \"x\": 1, \"y\": 2, \"images\": "
       "[1, 0]}]}",
       "\"images\" must be a list of at most 5", 1, 12},
      {"{\"steps\": [{\"x\": 1}]}", "has no \"do\"", 1, 12},
      {"{\"steps\": [7]}", "step 1 is not an object", 1, 11},
      {"{\"step\": []}", "unknown key \"step\"", 1, 1},
      {"{\"description\": \"no steps\"}", "\"steps\" is missing", 1, 1},
      {"[]", "one object", 1, 1},
      {"{\"input-ms\": -1, \"steps\": []}", "\"input-ms\" must be a whole number from 0", 1, 1},
  };
  for (const TBadCase& bad : cases) {
    SCOPED_TRACE(bad.Text);
    const TScenarioRead read = ReadScenario(bad.Text);
    EXPECT_FALSE(read.Scenario);
    EXPECT_NE(read.Error.find(bad.Says), std::string::npos) << read.Error;
    EXPECT_EQ(read.Line, bad.Line);
    EXPECT_EQ(read.Column, bad.Column);
    EXPECT_EQ(read.Error.rfind(
                  "line " + std::to_string(bad.Line) + " column " + std::to_string(bad.Column) + ": ", 0),
              0u)
        << read.Error;
  }
}

TEST(ScenarioFile, ShippedFilesRead) {
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(QX_SCENARIO_DIR)) {
    if (entry.path().extension() != ".json") continue;
    ++files;
    const TScenarioRead read = ReadScenarioFile(entry.path());
    EXPECT_TRUE(read.Scenario) << read.Error;
  }
  EXPECT_GE(files, 4);
  const TScenarioRead missing = ReadScenarioFile(std::filesystem::path(QX_SCENARIO_DIR) / "no-such.json");
  EXPECT_FALSE(missing.Scenario);
  EXPECT_NE(missing.Error.find("no-such.json: cannot be read"), std::string::npos) << missing.Error;
}

}  // namespace
}  // namespace qx
