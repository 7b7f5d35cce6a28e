#pragma once

#include <QString>
#include <functional>

#include "Kt_util_01.h"

namespace Kt_forms {

/// Prompts as message boxes over the active window. Texts are plain; their stored line breaks, CR LF or a
/// bare CR, are shown as line breaks. A notice goes to the status bar of the main window where there is one,
/// and is never in the way; one that nobody sees there stays, and is told elsewhere too.
class TMessage_Prompts : public Kt_util_01::TPrompts {
 public:
  explicit TMessage_Prompts(std::function<void(const QString&)> tell_elsewhere = {});
  void Error(const std::string& caption, const std::string& text) override;
  void Info(const std::string& caption, const std::string& text) override;
  int Question(const std::string& caption, const std::string& text) override;
  void Notice(const std::string& text) override;

 private:
  const std::function<void(const QString&)> tell_elsewhere;
};

}  // namespace Kt_forms
