#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "platform/questions.h"
#include "settings/settings.h"
#include "truckeditor/truckdocument.h"
#include "truckscene/truckfiles.h"
#include "truckscene/trucktextures.h"

namespace veldra {

/// What the pages of the editor share. The files are those of the truck's present path.
struct STruckPageContext {
  CTruckDocument& document;
  CQuestions& questions;
  const CSettings& settings;
  CTruckFiles* files = nullptr;
  CTruckTextures* textures = nullptr;
};

using TextPlace = std::function<std::string*(CTruck&)>;

/// One name of a truck: a line, a button that looks for a file, and where the file is that it stands for.
class CGameNameField : public QWidget {
  Q_OBJECT

 public:
  /// TYPE: one of EFileType, or kTypeOther for a text that names no file. NAME: object name of the line.
  CGameNameField(const STruckPageContext& context, const QString& name, int type, TextPlace place,
                 QWidget* parent = nullptr);

  /// What is looked for instead of the name itself, when that stands for several files; "" for nothing.
  void SetProbes(std::function<std::vector<std::string>(const std::string& name)> probes);
  /// The name to write for a file that the user picked.
  void SetNameOfFile(std::function<std::string(const std::string& file_name)> name_of_file);
  /// What else is wrong with a name, or "".
  void SetFurtherRule(std::function<QString(const std::string& name)> fault);
  /// To call when the place leads elsewhere or files have come or gone.
  void Refresh();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Take();
  void Browse();
  void ShowNote();
  void SayWhere(const std::string& name);
  void Say(const QString& text, bool is_fault);

  const STruckPageContext& context_;
  int type_;
  TextPlace place_;
  std::function<std::vector<std::string>(const std::string&)> probes_;
  std::function<std::string(const std::string&)> name_of_file_;
  std::function<QString(const std::string&)> further_fault_;
  QLineEdit* edit_;
  QPushButton* browse_ = nullptr;
  QLabel* note_;
  std::string shown_;
  bool is_there_ = false;
};

}  // namespace veldra
