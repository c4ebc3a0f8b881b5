#pragma once

#include <QLabel>
#include <QListWidget>
#include <QWidget>
#include <string>
#include <utility>
#include <vector>

namespace veldra {

/// What stands in the main window while nothing is open: ways to begin.
class CWelcomePage : public QWidget {
  Q_OBJECT

 public:
  explicit CWelcomePage(QWidget* parent = nullptr);
  /// FILES: each path with the file of its picture.
  void SetRecent(const std::vector<std::pair<std::string, std::string>>& files);

 signals:
  void CommandWanted(const char* name);
  void FileWanted(const std::string& path);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QLabel* recent_label_;
  QListWidget* recent_;
};

}  // namespace veldra
