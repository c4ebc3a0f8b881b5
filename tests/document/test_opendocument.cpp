#include <filesystem>

#include "document/documentfixture.h"
#include "platform/files.h"

namespace veldra::testing {
namespace {

class COpenDocumentTest : public CDocumentTest {
 protected:
  std::string WriteGoodModel(const std::string& name) {
    CTarnDoc document(Services());
    FillGood(document.Model());
    EXPECT_TRUE(document.SaveMTM(folder.File(name)));
    folder.Write("GOOD.RAW", std::string(64 * 64, '\0'));
    return folder.File(name);
  }
};

class CRecorder : public CDocumentObserver {
 public:
  void OnDocumentChanged(const CTarnDoc&, const SModelChange&) override { ++changes; }
  void OnDocumentStateChanged(const CTarnDoc& document) override {
    ++states;
    if (leaves) const_cast<CTarnDoc&>(document).RemoveObserver(this);
  }
  int changes = 0;
  int states = 0;
  bool leaves = false;
};

TEST_F(COpenDocumentTest, TakesPathAndModelAndIsNotModified) {
  const std::string path = WriteGoodModel("truck.bin");
  CRecorder recorder;
  CTarnDoc document(Services());
  document.AddObserver(&recorder);
  ASSERT_TRUE(document.OnOpenDocument(path));
  EXPECT_EQ(document.Path(), path);
  EXPECT_EQ(document.Title(), "truck.bin");
  EXPECT_EQ(document.Model().FaceCount(), 1);
  EXPECT_FALSE(document.IsModified() || document.IsReadOnly());
  EXPECT_EQ(recorder.changes, 1) << "the whole model, once";

  document.CenterX();
  EXPECT_TRUE(document.IsModified());
  ASSERT_TRUE(document.OnOpenDocument(path));
  EXPECT_FALSE(document.IsModified()) << "read anew";
  EXPECT_EQ(document.Model().FaceCount(), 1);
}

TEST_F(COpenDocumentTest, FileThatMayNotBeWrittenOpensReadOnly) {
  const std::string path = WriteGoodModel("truck.bin");
  namespace fs = std::filesystem;
  fs::permissions(path, fs::perms::owner_read);
  CTarnDoc document(Services());
  ASSERT_TRUE(document.OnOpenDocument(path));
  EXPECT_TRUE(document.IsReadOnly());
  fs::permissions(path, fs::perms::owner_write, fs::perm_options::add);
}

TEST_F(COpenDocumentTest, PathWithoutFileIsReported) {
  CTarnDoc document(Services());
  for (const std::string& path : {folder.File("missing.bin"), folder.Path(), std::string()}) {
    SDiagnosis diagnosis;
    EXPECT_FALSE(document.OnOpenDocument(path, &diagnosis));
    EXPECT_FALSE(questions.Messages().at(0).details.empty());
    EXPECT_FALSE(diagnosis.Empty());
    ExpectOnlyMessage("\"" + path + "\" could not be opened.");
  }
}

TEST_F(COpenDocumentTest, FailedLoadLeavesAnEmptyDocument) {
  const std::string good = WriteGoodModel("good.bin");
  const std::string bad = folder.Write("bad.bin", std::string("\x14\0\0\0", 4));
  CTarnDoc document(Services());
  ASSERT_TRUE(document.OnOpenDocument(good));
  document.SetReadOnly(true);
  SDiagnosis diagnosis;
  EXPECT_FALSE(document.OnOpenDocument(bad, &diagnosis));
  ExpectOnlyMessage("Model is currupt and cannot be loaded");
  EXPECT_FALSE(diagnosis.Empty());
  EXPECT_EQ(document.Path(), "");
  EXPECT_EQ(document.Model().VertexCount(), 0);
  EXPECT_FALSE(document.IsModified() || document.IsReadOnly());
}

TEST_F(COpenDocumentTest, ObserverMayLeaveWhileItIsTold) {
  CRecorder leaving;
  CRecorder staying;
  CTarnDoc document(Services());
  leaving.leaves = true;
  document.AddObserver(&leaving);
  document.AddObserver(&staying);
  document.SetModified(true);
  document.SetModified(true);
  document.SetModified(false);
  EXPECT_EQ(leaving.states, 1);
  EXPECT_EQ(staying.states, 2) << "told of changes only";
}

}  // namespace
}  // namespace veldra::testing
