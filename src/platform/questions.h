#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/png.h"

namespace veldra {

inline constexpr const char* kCaption = "Veldra";
inline constexpr const char* kErrorCaption = "Veldra - Error";

enum class EIcon { kNone, kInformation, kWarning, kError, kQuestion };
enum class EAnswer { kYes, kNo, kCancel };
/// The answers of the prompt "YesToAll", with the numbers that its buttons have always had.
enum class EReplaceAnswer { kCancel = 2, kYes = 6, kNo = 7, kYesToAll = 26 };

/// A message box. DETAILS says what and where for those who want to know (a byte offset, the system's reason).
struct SMessage {
  std::string text;
  std::string caption = kCaption;
  EIcon icon = EIcon::kInformation;
  std::string details = {};
  /// Of a question: what the Enter key answers. Where an answer loses something, that is another one.
  EAnswer usual = EAnswer::kYes;
  // What the buttons say instead of "Yes" and "No"; "&" before the letter of the shortcut.
  std::string yes = {};
  std::string no = {};
};

struct SFileFilter {
  std::string label;    ///< "MTM Texture *.raw"
  std::string pattern;  ///< "*.raw", or several: "*.png *.jpg"
};

struct SFilePrompt {
  std::string title;
  std::vector<SFileFilter> filters;
  std::string directory;          ///< where it opens
  std::string name;               ///< offered file name, when saving
  std::string default_extension;  ///< without ".", added to a name typed without one
  bool offers_read_only = false;  ///< AskOpenFiles only: a check box beside the files
  bool asks_to_replace = true;    ///< AskSaveFile only: before a file is chosen that is there already
  std::string note = {};          ///< AskOpenFile only: what the file is for, where the title does not say it
  /// AskOpenFile only: what the file at PATH looks like, without pixels where it is no picture. May be empty.
  std::function<SImage(const std::string& path)> make_picture = {};
  std::string no_picture = {};  ///< with it: what is said of a file without one; "" where textures are looked for
};

/// Files picked to be opened.
struct SOpenFiles {
  std::vector<std::string> paths;  ///< never empty
  bool read_only = false;          ///< the user wants them opened so; only where the prompt offers it
};

struct SSavePath {
  std::string path;
  size_t filter = 0;  ///< position in SFilePrompt::filters
};

/// What to do with a face record of a type that nobody knows.
struct SUnknownFaceAnswer {
  enum class EChoice { kIgnore, kAbort, kChange } choice = EChoice::kAbort;
  uint32_t type = 0;  ///< for kChange: one of the known face types
};

struct SUnusedVerticesAnswer {
  enum class EChoice { kDelete, kSaveAnyway, kCancel } choice = EChoice::kCancel;
  bool dont_show_again = false;
};

/// What stands in for a texture that is not found. The model goes on naming the texture that it names.
struct STextureAnswer {
  enum class EChoice {
    kGiveUp,
    kFile,        ///< this file
    kFolder,      ///< what this folder has for it and for others of the model that are missing
    kBlank,       ///< a blank one
    kBlankForAll  ///< likewise, for all of the model that are missing
  } choice = EChoice::kGiveUp;
  std::string path = {};  ///< for kFile and kFolder
  int width = 0;          ///< of a blank one: 64, 128, 256 or 512
};

/// A long operation on the way. Destroyed when it ends.
class CProgress {
 public:
  virtual ~CProgress() = default;
  /// DONE of TOTAL steps. Returns false when the user wants it stopped; the operation then undoes what it did and
  /// reports failure.
  virtual bool Step(uint64_t done, uint64_t total) = 0;
};

/// Everything that logic wants to know from the user. Texts stand beside the code that asks; this only shows them.
/// Three implementations: dialogs (editor), options (command line), a script (tests); unattendedquestions.h is for
/// programs with nobody to ask.
class CQuestions {
 public:
  /// While it lives, all that is said and asked is about one file. Of those that live, the newest counts.
  class CAbout {
   public:
    /// FILE is a path, or a document's title; it goes where there is room, unless the text says it.
    CAbout(CQuestions& questions, std::string file)
        : questions_(questions), before_(std::exchange(questions.about_, std::move(file))) {}
    ~CAbout() { questions_.about_ = std::move(before_); }
    CAbout(const CAbout&) = delete;
    CAbout& operator=(const CAbout&) = delete;

   private:
    CQuestions& questions_;
    std::string before_;
  };

  virtual ~CQuestions() = default;

  virtual void Message(const SMessage& message) = 0;
  /// Shows what failed; false, so that a function can end with it.
  bool Fail(std::string text, std::string details = {});
  virtual EAnswer AskYesNo(const SMessage& question) = 0;  ///< never kCancel
  virtual EAnswer AskYesNoCancel(const SMessage& question) = 0;
  /// Yes, yes to this and all later ones, no, or cancel all.
  virtual EReplaceAnswer AskReplace(const SMessage& question) = 0;
  virtual std::optional<std::string> AskOpenFile(const SFilePrompt& prompt) = 0;
  /// One or more files.
  virtual std::optional<SOpenFiles> AskOpenFiles(const SFilePrompt& prompt) = 0;
  /// A folder that exists; DIRECTORY is where the prompt opens.
  virtual std::optional<std::string> AskFolder(const std::string& title, const std::string& directory) = 0;
  virtual std::optional<SSavePath> AskSaveFile(const SFilePrompt& prompt) = 0;

  virtual SUnknownFaceAnswer AskUnknownFace(uint32_t type) = 0;
  virtual SUnusedVerticesAnswer AskUnusedVertices() = 0;
  /// Shows MESSAGE, then offers another file; asked again while the answer cannot be loaded.
  virtual STextureAnswer AskTexture(const SMessage& message, const SFilePrompt& prompt) = 0;
  /// The Hellbender scale factor, OFFERED filled in; nothing when cancelled.
  virtual std::optional<double> AskScaleFactor(double offered) = 0;

  /// Never null. TITLE says what is under way; CANCELLABLE only where stopping leaves nothing half done.
  virtual std::unique_ptr<CProgress> BeginWork(const std::string& title, bool cancellable) = 0;

 protected:
  const std::string& About() const { return about_; }  ///< "" while it is about no file
  /// The details of MESSAGE with the file that it is about.
  std::string DetailsOf(const SMessage& message) const;

 private:
  std::string about_;
};

}  // namespace veldra
