#include <gmock/gmock.h>

#include "model/infofile.h"
#include "model/loadfixture.h"
#include "model/modelbuilder.h"

namespace veldra::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(Info, IsWrittenLineByLine) {
  CModelBuilder builder;
  builder.Vertices({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  builder.Face({0, 1, 2});
  builder.model.AddGroup(EGroupKind::kFaces, "the hood", std::vector<int32_t>{0});
  builder.model.AddGroup(EGroupKind::kFaces, "empty", {});
  builder.model.AddGroup(EGroupKind::kVertices, "rim\n1", std::vector<int32_t>{2, 0});
  const std::vector<std::string> animations = {"FLAG", "FLAG"};
  EXPECT_EQ(WriteInfo(builder.model, animations), "2\nthe hood\n0\nempty\n\n1\nrim 1\n2 0\n2\nFLAG\nFLAG\n");
  EXPECT_EQ(WriteInfo(CBinModel(), {}), "0\n0\n0\n");
}

TEST(Info, IsReadWhateverEndsItsLines) {
  for (const char* end : {"\n", "\r\n", "\r"}) {
    std::string text;
    for (const char* line : {"2", " a name ", "3\t1  2 ", "empty", "", "1", "v", "7", "1", "FLAG"})
      text += std::string(line) + end;
    const SModelInfo info = ParseInfo(text);
    EXPECT_THAT(info.complaints, IsEmpty());
    ASSERT_EQ(info.face_groups.size(), 2U);
    EXPECT_EQ(info.face_groups[0].name, " a name ");
    EXPECT_THAT(info.face_groups[0].members, ElementsAre(3, 1, 2));
    EXPECT_THAT(info.face_groups[1].members, IsEmpty());
    ASSERT_EQ(info.vertex_groups.size(), 1U);
    EXPECT_THAT(info.vertex_groups[0].members, ElementsAre(7));
    EXPECT_THAT(info.animations, ElementsAre("FLAG"));
  }
  EXPECT_THAT(ParseInfo("").complaints, IsEmpty());
  EXPECT_THAT(ParseInfo("0\n0\n1\nlast line without its end").animations, ElementsAre("last line without its end"));
}

TEST(Info, DamageBecomesComplaintsAndTheRestIsKept) {
  const struct {
    const char* text;
    size_t groups;
    const char* complaint;
  } rows[] = {
      {"x\n0\n0\n", 0, "line 1: \"x\" is no number of face groups"},
      {"99999999999\n", 0, "line 1: \"99999999999\" is no number of face groups"},
      {"a line of more than forty characters is shortened\n", 0,
       "line 1: \"a line of more than forty characters is ...\" is no number of face groups"},
      {"2147483647\na\n0\n", 0, "line 1: 2147483647 face groups are more than the file has room for"},
      {"2\na\n0 1\n", 1, "line 3: the file ends after 1 of 2 face groups"},
      {"1\na\n0 x 1\n0\n0\n", 1, "line 3: \"x\" is no member of a group"},
      {"1\na\n0\n0\n2\nFLAG\n", 1, "line 6: the file ends after 1 of 2 animation names"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.complaint);
    const SModelInfo info = ParseInfo(row.text);
    EXPECT_EQ(info.face_groups.size(), row.groups);
    EXPECT_THAT(info.complaints, ElementsAre(row.complaint));
  }
}

class CInfoLoadTest : public CLoadTest {
 protected:
  const std::vector<uint8_t> triangle = CBinBytes().Header(3).Texture("ROAD").Face(0x18, {{0}, {1}, {2}}).End().bytes;
};

TEST_F(CInfoLoadTest, DamagedGroupsAreMendedAndReportedTogether) {
  ASSERT_TRUE(Load(triangle, "5\nhood\n0 1 -1\nhood\n0 0\nhood 2\n\n\n0\nhood\n\n1\nv\n0 x 9\n0\n"));
  EXPECT_EQ(WriteInfo(model, {}), "5\nhood\n0\nhood 2\n0\nhood 2 2\n\ngroup\n0\nhood 3\n\n1\nv\n0\n0\n");
  ASSERT_EQ(questions.Messages().size(), 1U);
  const SMessage& message = questions.Messages()[0];
  EXPECT_EQ(message.text, "The groups beside this model could not all be read.");
  EXPECT_EQ(message.icon, EIcon::kWarning);
  EXPECT_EQ(message.details,
            "line 14: \"x\" is no member of a group\n"
            "group \"hood\": 2 members lie outside the model's 1 faces\n"
            "group \"hood\" is now \"hood 2\"\n"
            "group \"hood 2\" is now \"hood 2 2\"\n"
            "group \"\" is now \"group\"\n"
            "group \"hood\" is now \"hood 3\"\n"
            "group \"v\": 1 members lie outside the model's 3 vertices\n");
  questions.TakeMessageTexts();
}

TEST_F(CInfoLoadTest, LongListsOfComplaintsAreCutShort) {
  std::string info = "50\n";
  for (int i = 0; i < 50; ++i)
    info += std::to_string(i) + "g\n0 x y\n";
  ASSERT_TRUE(Load(triangle, info + "0\n0\n"));
  ASSERT_EQ(questions.Messages().size(), 1U);
  EXPECT_THAT(questions.Messages()[0].details, HasSubstr("and 30 more\n"));
  questions.TakeMessageTexts();
}

}  // namespace

}  // namespace veldra::testing
