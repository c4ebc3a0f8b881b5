#include "settings/keyevents.h"

#include <QGuiApplication>
#include <utility>

#include "settings/keytext.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr std::string_view kOnNumberPad = "Num+";
constexpr Qt::KeyboardModifiers kAllModifiers =
    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

/// Shift is part of making a sign, not of what it means.
bool IsSign(int key) {
  const bool is_letter = key >= Qt::Key_A && key <= Qt::Key_Z;
  return key > Qt::Key_Space && key < Qt::Key_AsciiTilde + 1 && !is_letter;
}

/// With a keyboard that writes no Latin letters, the one that most have in the place of EVENT's key; 0 where there is
/// none.
int LatinKey(const QKeyEvent& event) {
  constexpr int kLastLatin = 0x24F;
  constexpr int kLastLetter = 0xFFFF;
  const int key = event.key();
  if (key <= kLastLatin || key > kLastLetter || !QChar(key).isLetter()) return 0;
  constexpr std::pair<int, std::string_view> kRows[] = {{16, "QWERTYUIOP"}, {30, "ASDFGHJKL"}, {44, "ZXCVBNM"}};
  constexpr int kFirstUnderX = 8;  // its numbers begin there
  const int place =
      static_cast<int>(event.nativeScanCode()) - (QGuiApplication::platformName() == "windows" ? 0 : kFirstUnderX);
  for (const auto& [first, letters] : kRows)
    if (place >= first && place < first + static_cast<int>(letters.size()))
      return letters[static_cast<size_t>(place - first)];
  return 0;
}

/// The key as the tables name it: Shift+Tab comes as a key of its own, and "+" without its Shift as "=".
int PlainKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Backtab:
      return Qt::Key_Tab;
    case Qt::Key_Equal:
      return Qt::Key_Plus;
    case Qt::Key_Enter:
      return Qt::Key_Return;
    default:
      const int latin = LatinKey(event);
      return latin != 0 ? latin : event.key();
  }
}

bool IsModifier(int key) {
  return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) || key == Qt::Key_AltGr || key == Qt::Key_Super_L ||
         key == Qt::Key_Super_R || key == Qt::Key_Mode_switch;
}

QKeySequence SequenceOf(std::string_view key) {
  QString text = ToQString(key);
  return QKeySequence(text.remove(ToQString(kOnNumberPad)), QKeySequence::PortableText);
}

}  // namespace

CKeyMatch::CKeyMatch(std::string_view key) : on_number_pad_(key.find(kOnNumberPad) != std::string_view::npos) {
  const QKeySequence sequence = SequenceOf(key);
  if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown) return;
  key_ = sequence[0].key();
  modifiers_ = sequence[0].keyboardModifiers();
}

bool CKeyMatch::MatchesNumberPad(const QKeyEvent& event) const {
  // With Num Lock off the key in the middle has a name of its own.
  const bool is_middle = key_ == Qt::Key_5 && event.key() == Qt::Key_Clear;
  return is_middle || (event.key() == key_ && (event.modifiers() & Qt::KeypadModifier) != 0);
}

bool CKeyMatch::Matches(const QKeyEvent& event) const {
  const Qt::KeyboardModifiers ignored = IsSign(key_) ? Qt::ShiftModifier : Qt::NoModifier;
  if ((event.modifiers() & kAllModifiers & ~ignored) != (modifiers_ & ~ignored)) return false;
  return on_number_pad_ ? MatchesNumberPad(event) : PlainKey(event) == key_;
}

std::string KeyOf(const QKeyEvent& event) {
  if (IsModifier(event.key()) || event.key() == 0 || event.key() == Qt::Key_unknown) return "";
  const bool is_middle = event.key() == Qt::Key_Clear;
  const auto key = static_cast<Qt::Key>(is_middle ? Qt::Key_5 : PlainKey(event));
  const QString bare = QKeySequence(key).toString(QKeySequence::PortableText);
  QString text;
  if (event.modifiers().testFlag(Qt::MetaModifier)) text += "Meta+";
  if (event.modifiers().testFlag(Qt::ControlModifier)) text += "Ctrl+";
  if (event.modifiers().testFlag(Qt::AltModifier)) text += "Alt+";
  if (event.modifiers().testFlag(Qt::ShiftModifier)) text += "Shift+";
  if (event.modifiers().testFlag(Qt::KeypadModifier) || is_middle) text += "Num+";
  return ParseKey((text + bare).toStdString()).value_or("");
}

QList<QKeySequence> ShortcutsOf(const std::vector<std::string>& keys) {
  QList<QKeySequence> sequences;
  for (const std::string& key : keys) {
    sequences.append(SequenceOf(key));
    if (key.ends_with('+')) sequences.append(SequenceOf(key.substr(0, key.size() - 1) + '='));
    if (key.ends_with("Return")) sequences.append(SequenceOf(key.substr(0, key.size() - 6) + "Enter"));
  }
  return sequences;
}

}  // namespace veldra
