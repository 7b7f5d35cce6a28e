#pragma once

#include <QUrl>
#include <functional>
#include <optional>

#include "Contact_Fields.h"

namespace Plexidex {

/// What a click on a telephone number, an e-mail or a web address opens; nothing for a text that is none. The
/// scheme is one of tel, mailto, http and https.
std::optional<QUrl> Link_To(Kt_data_01::TField_Kind kind, const QString& text);

/// Opens a link of these schemes, and says when nothing on this machine does. Any other is not opened.
void Open_Link(const QUrl& link);
/// What a document link leads to: a local file by its whole path, which may begin with "~", or a web address;
/// nothing for a text that is neither.
std::optional<QUrl> Document_Link(const QString& target);
/// Opens it. False when it is not there or nothing on this machine opens it, which is said.
bool Open_Document(const QString& target);
/// What opens links; false when it cannot. The empty one, as at the start, is the desktop.
using TLink_Opener = std::function<bool(const QUrl& link)>;
void Install_Link_Opener(TLink_Opener opener);

}  // namespace Plexidex
