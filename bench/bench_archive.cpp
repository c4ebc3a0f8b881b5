#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "archive/filepart.h"
#include "archive/podchanges.h"
#include "archive/poddocument.h"
#include "archive/podedit.h"
#include "archive/podfile.h"
#include "archive/podwriter.h"
#include "comparison.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/unattendedquestions.h"

namespace veldra::bench {

namespace {

constexpr size_t kListedEntries = 9000;
constexpr size_t kFiles = 2000;
constexpr size_t kAllBytes = size_t{1} << 30;
constexpr size_t kManyEntries = 50000;

/// A folder for the files of these comparisons, made when the first one runs.
class CArchiveFolder {
 public:
  CArchiveFolder() : path_((std::filesystem::temp_directory_path() / "veldra-bench-archive").string()) {}
  ~CArchiveFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
    if (!has_files_) return;
    rusage children = {};
    getrusage(RUSAGE_CHILDREN, &children);
    std::printf("largest memory of a program that made or extracted an archive: %.1f MiB\n",
                static_cast<double>(children.ru_maxrss) / 1024);
  }

  std::string File(const std::string& name) const { return path_ + "/" + name; }

  /// The archive of many small entries.
  std::string Listed() {
    const std::string path = File("listed.pod");
    if (FileExists(path)) return path;
    MakeDirectories(path_);
    const std::string content = File("content");
    ReplaceFile(content, "some bytes");
    std::vector<SPodSource> sources;
    for (size_t i = 0; i < kListedEntries; ++i)
      sources.push_back({Format("T%zu.RAW", i), {content}});
    CUnattendedQuestions questions;
    CreatePod(questions, path, sources);
    return path;
  }

  /// 1 GiB in 50,000 entries, and a file of another length to put in the place of one.
  std::string Many() {
    const std::string path = File("many.pod");
    if (FileExists(path)) return path;
    MakeDirectories(File("in"));
    const std::string content = File("part");
    const std::vector<uint8_t> bytes(kAllBytes / kManyEntries, 0x55);
    ReplaceFile(content, bytes);
    ReplaceFile(File("other"), "another texture");
    std::vector<SPodSource> sources;
    for (size_t i = 0; i < kManyEntries; ++i)
      sources.push_back({Format("T%05zu.RAW", i), {content}});
    CUnattendedQuestions questions;
    CreatePod(questions, path, sources);
    return path;
  }

  /// 1 GiB in 2,000 files of all lengths, and both kinds of archive of them.
  void MakeFiles() {
    if (has_files_) return;
    has_files_ = true;
    MakeDirectories(File("in"));
    std::mt19937 random(1);
    std::vector<uint8_t> bytes(2 * kAllBytes / kFiles);
    for (uint8_t& byte : bytes)
      byte = static_cast<uint8_t>(random());
    size_t left = kAllBytes;
    for (size_t i = 0; i < kFiles; ++i) {
      const size_t length = i + 1 == kFiles ? std::min(left, bytes.size()) : std::min(left, random() % bytes.size());
      ReplaceFile(File(Format("in/F%zu.RAW", i)), std::span(bytes).first(length));
      left -= length;
    }
    Run("tar -cf ../files.tar *");
    Run(VELDRA_CLI " pod create ../files.pod *");
  }

  void Run(const std::string& command) const {
    const std::string line = "cd '" + File("in") + "' && " + command + " >/dev/null";
    if (std::system(line.c_str()) != 0) std::fprintf(stderr, "failed: %s\n", command.c_str());
  }

  /// COMMAND, which writes to ../out, with an empty folder there and a disk that has nothing else to do.
  double Measure(const std::string& command) {
    MakeFiles();
    Run("rm -rf ../out ../out.* && mkdir ../out && sync");
    return Seconds([&] { Run(command); });
  }

 private:
  std::string path_;
  bool has_files_ = false;
};

CArchiveFolder& Folder() {
  static CArchiveFolder folder;
  return folder;
}

double ReadDirectoryOf(const std::string& path, size_t entries) {
  return Seconds([&] {
    const auto bytes = ReadFilePart({path, 0, kPodHeaderSize + kPodRecordSize * entries});
    asm volatile("" : : "r"(bytes->View().data()) : "memory");
  });
}

double ReadDirectoryBytes() {
  return ReadDirectoryOf(Folder().Listed(), kListedEntries);
}

double ListByReader() {
  const std::string path = Folder().Listed();
  CUnattendedQuestions questions;
  return Seconds([&] {
    CMTMPODFile pod(questions);
    pod.ReadDirectory(path);
  });
}

double ListByDocument() {
  const std::string path = Folder().Listed();
  return Seconds([&] {
    CPodDocument pod;
    pod.Load(path);
  });
}

/// As far as a list that shows every name goes.
double ListNames(const std::string& path) {
  return Seconds([&] {
    CPodDocument pod;
    pod.Load(path);
    size_t characters = 0;
    for (const SPodEntry& entry : pod.Entries())
      characters += entry.Folder().size() + entry.FileName().size();
    asm volatile("" : : "r"(characters));
  });
}

double ListByName() {
  return ListNames(Folder().Listed());
}

double ListMany() {
  return ListNames(Folder().Many());
}

double ReadManyDirectoryBytes() {
  return ReadDirectoryOf(Folder().Many(), kManyEntries);
}

/// Flushed to the disk, as an archive that is saved is.
double CopyMany() {
  Folder().Many();
  Folder().Run("rm -f ../copy.pod && sync");
  return Seconds([&] { Folder().Run("cp ../many.pod ../copy.pod && sync ../copy.pod"); });
}

double ReplaceOneOfMany() {
  const std::string path = Folder().Many();
  Folder().Run("rm -f ../copy.pod && sync");
  return Seconds([&] {
    CUnattendedQuestions questions;
    CPodDocument pod;
    pod.Load(path);
    CPodChanges changes(pod);
    changes.Replace(questions, kManyEntries / 2, Folder().File("other"));
    SavePod(questions, pod, Folder().File("copy.pod"));
  });
}

}  // namespace

void AddArchiveComparisons() {
  Compare("list 50,000 of 1 GiB", ListMany, {{"read the directory", ReadManyDirectoryBytes, 0}});
  Compare("replace 1 of 50,000", ReplaceOneOfMany, {{"cp, sync", CopyMany, 1.2}});
  Compare("list 9000", ListByReader, {{"read the directory", ReadDirectoryBytes, 3}});
  CompareWith("list 9000, check", ListByDocument, "list 9000: read the directory", 3);
  CompareWith("list 9000, names", ListByName, "list 9000: read the directory", 0);
  const auto measure = [](const char* command) { return [command] { return Folder().Measure(command); }; };
  Compare("extract 1 GiB", measure(VELDRA_CLI " pod extract ../files.pod ../out"),
          {{"tar -xf", measure("tar -xf ../files.tar -C ../out"), 1.3}});
  Compare("create 1 GiB", measure(VELDRA_CLI " pod create ../out.pod *"),
          {{"tar -cf", measure("tar -cf ../out.tar *"), 1.3}});
}

}  // namespace veldra::bench
