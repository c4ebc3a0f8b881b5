#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <map>
#include <memory>

#include "archive/poddocument.h"
#include "platform/unattendedquestions.h"
#include "settings/settings.h"
#include "textures/texturestore.h"

namespace veldra {

class CTarnDoc;
class CTarnView;

/// Shows what an entry of an archive holds, without extracting it: a model in a small 3D view that can be turned, a
/// texture with its colour table, a colour table, a picture, text.
class CPodPreview : public QWidget {
  Q_OBJECT

 public:
  explicit CPodPreview(CSettings& settings, QWidget* parent = nullptr);
  ~CPodPreview() override;

  void ShowEntry(const CPodDocument& archive, size_t entry);
  /// No entry: TEXT instead.
  void ShowNothing(const QString& text);
  /// The setting DEFPAL has changed; what is shown has to be shown again.
  void ReadDefaultColors();

  /// What is shown, and in words: for tests and for who cannot see it.
  QWidget* Shown() const { return pages_->currentWidget(); }
  QString Caption() const { return caption_->text(); }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// False when BYTES are not of that kind.
  bool ShowModel(const CPodDocument& archive, const CFileBytes& bytes);
  bool ShowTexture(const CPodDocument& archive, const std::string& name);
  bool ShowColors(const CFileBytes& bytes);
  bool ShowImage(const CFileBytes& bytes);
  bool ShowText(const CFileBytes& bytes);
  void ShowPicture(const QImage& image);
  void FitPicture();

  /// Questions about a damaged model go nowhere: the preview then says so.
  class CNobody : public CUnattendedQuestions {
   public:
    void Message(const SMessage&) override {}
  };

  ColorTable default_colors_;
  CNobody nobody_;
  CTextureStore textures_;
  std::map<std::string, std::unique_ptr<STextureImage>> images_;  ///< of the model shown
  std::shared_ptr<CTarnDoc> document_;
  QStackedWidget* pages_;
  QLabel* message_;
  QLabel* picture_;
  QPlainTextEdit* text_;
  CTarnView* view_;
  QLabel* caption_;
  QImage image_;
};

}  // namespace veldra
