#include <QApplication>
#include <filesystem>
#include <memory>

#include "archive/podwriter.h"
#include "comparison.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/unattendedquestions.h"
#include "podtools/podlistview.h"

namespace veldra::bench {

namespace {

constexpr size_t kSearchedEntries = 50000;

/// The list of an archive of 50,000 entries on a screen in memory.
class CSearchedList {
 public:
  CSearchedList() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    application_ = std::make_unique<QApplication>(arguments_, names_);
    const std::string folder = (std::filesystem::temp_directory_path() / "veldra-bench-list").string();
    MakeDirectories(folder);
    const std::string content = folder + "/content";
    ReplaceFile(content, "some bytes");
    std::vector<SPodSource> sources;
    for (size_t i = 0; i < kSearchedEntries; ++i)
      sources.push_back({Format("T%05zu.RAW", i), {content}});
    CUnattendedQuestions questions;
    CreatePod(questions, folder + "/list.pod", sources);
    archive_.Load(folder + "/list.pod");
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    view_ = std::make_unique<CPodListView>(settings_);
    view_->resize(600, 500);
    view_->Show(&archive_);
    view_->show();
    Type("T");
    Type("");
  }

  /// Until the list shows what is left.
  double Type(const QString& text) {
    return Seconds([&] {
      view_->Filter().Search(text);
      QApplication::processEvents();
      view_->viewport()->repaint();
    });
  }

 private:
  int arguments_ = 1;
  char name_[6] = "bench";
  char* names_[2] = {name_, nullptr};
  std::unique_ptr<QApplication> application_;
  CSettings settings_;
  CPodDocument archive_;
  std::unique_ptr<CPodListView> view_;
};

/// The slowest key of a search that is typed and taken back.
double TypeAndTakeBack() {
  // Lives until the end, as the application does.
  static auto* const list = new CSearchedList;
  double slowest = 0;
  for (const char* text : {"t", "t0", "t00", "t001", "t00", "t0", "t", ""})
    slowest = std::max(slowest, list->Type(text));
  return slowest;
}

}  // namespace

void AddListComparisons() {
  Compare("search in 50,000, a key", TypeAndTakeBack, {{"a frame of 60 a second", [] { return 1.0 / 60; }, 1}});
}

}  // namespace veldra::bench
