#include "Web_Links.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "Kt_forms.h"
#include "Kt_util_01.h"

namespace Plexidex {

using Kt_data_01::TField_Kind;

namespace {

TLink_Opener& Opener() {
  static TLink_Opener opener;
  return opener;
}

QUrl With_Scheme(const char* scheme, const QString& path) {
  QUrl url;
  url.setScheme(QString::fromLatin1(scheme));
  url.setPath(path, QUrl::DecodedMode);
  return url;
}

bool Has_Blank(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
}

std::optional<QUrl> Telephone(const QString& text) {
  constexpr int least_digits = 2, least_before_words = 5;
  QString number = text;
  // The prefix of calls within the country.
  if (number.startsWith(QLatin1Char('+'))) number.remove(QLatin1String("(0)"));
  const auto word = std::find_if(number.begin(), number.end(), [](QChar c) { return c.isLetter(); });
  const bool has_words = word != number.end();
  number.truncate(word - number.begin());
  QString dialled;
  int digits = 0;
  for (const QChar c : number) {
    const bool is_digit = c >= QLatin1Char('0') && c <= QLatin1Char('9');
    digits += is_digit;
    if (is_digit || c == QLatin1Char('*') || c == QLatin1Char('#') ||
        (c == QLatin1Char('+') && dialled.isEmpty()))
      dialled += c;
  }
  if (digits < (has_words ? least_before_words : least_digits)) return {};
  return With_Scheme("tel", dialled);
}

// Also of "Anna Berg <anna@example.org>".
std::optional<QUrl> Mail(const QString& text) {
  QString address = text;
  if (const auto open = text.lastIndexOf(QLatin1Char('<')); open >= 0 && text.endsWith(QLatin1Char('>')))
    address = text.mid(open + 1, text.size() - open - 2).trimmed();
  const auto at = address.indexOf(QLatin1Char('@'));
  if (at <= 0 || at == address.size() - 1 || Has_Blank(address)) return {};
  return With_Scheme("mailto", address);
}

std::optional<QUrl> Web(const QString& text) {
  if (Has_Blank(text)) return {};
  const bool has_scheme = text.contains(QLatin1String("://"));
  const QUrl url(has_scheme ? text : QLatin1String("https://") + text);
  const bool is_web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
  const bool is_host = has_scheme ? !url.host().isEmpty() : url.host().contains(QLatin1Char('.'));
  if (!url.isValid() || !is_web || !is_host) return {};
  return url;
}

}  // namespace

std::optional<QUrl> Link_To(TField_Kind kind, const QString& text) {
  switch (kind) {
    case TField_Kind::Telephone:
      return Telephone(text.trimmed());
    case TField_Kind::Mail:
      return Mail(text.trimmed());
    case TField_Kind::Web:
      return Web(text.trimmed());
    default:
      return {};
  }
}

void Install_Link_Opener(TLink_Opener opener) {
  Opener() = std::move(opener);
}

namespace {

bool Open(const QUrl& link) {
  if (Opener() ? Opener()(link) : QDesktopServices::openUrl(link)) return true;
  Kt_util_01::Raise_Error("Contact", "There is no program on this machine that opens \"" +
                                         Kt_forms::From_Qt(link.toString()) + "\".");
  return false;
}

}  // namespace

void Open_Link(const QUrl& link) {
  static const QStringList schemes{QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("mailto"),
                                   QStringLiteral("tel")};
  if (schemes.contains(link.scheme())) Open(link);
}

std::optional<QUrl> Document_Link(const QString& target) {
  QString path = target.trimmed();
  if (path.startsWith(QLatin1String("file://"))) path = QUrl(path).toLocalFile();
  if (path == QLatin1String("~") || path.startsWith(QLatin1String("~/")))
    path.replace(0, 1, QDir::homePath());
  if (QDir::isAbsolutePath(path)) return QUrl::fromLocalFile(path);
  return Link_To(TField_Kind::Web, target);
}

bool Open_Document(const QString& target) {
  const auto link = Document_Link(target);
  if (!link) {
    Kt_util_01::Raise_Error("Link", "\"" + Kt_forms::From_Qt(target) +
                                        "\" is neither a web address nor the whole path of a file.");
    return false;
  }
  if (link->isLocalFile() && !QFileInfo::exists(link->toLocalFile())) {
    Kt_util_01::Raise_Error("Link",
                            "The file \"" + Kt_forms::From_Qt(link->toLocalFile()) + "\" is not there.");
    return false;
  }
  return Open(*link);
}

}  // namespace Plexidex
