#include "movie_address.h"

#include "core/language.h"

namespace tarn {

namespace {

int usual_port(const QUrl& url)
{
    return url.scheme() == QLatin1String("https") ? 443 : 80;
}

} // namespace

Result<QString> movie_address(const QString& written)
{
    QUrl url(written.trimmed());
    const bool is_web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    if (!is_web)
        return Status::error(
            lang(u"网址必须以 http:// 或 https:// 开头。", u"The address has to begin with http:// or https://."));
    if (url.authority().contains(QLatin1Char('@')))
        return Status::error(
            lang(u"不加载含用户名或密码的网址。", u"Addresses with a user's name or password are not loaded."));
    if (!url.isValid() || url.host().isEmpty())
        return Status::error(lang(u"网址无效。", u"The address is not valid."));
    url.setFragment({});
    if (url.port() == usual_port(url))
        url.setPort(-1);
    if (url.path().isEmpty())
        url.setPath(QStringLiteral("/"));
    const QString address = url.toString(QUrl::FullyEncoded);
    if (address.size() > longest_movie_address)
        return Status::error(lang(u"网址过长。", u"The address is too long."));
    return address;
}

bool is_same_server(const QUrl& one, const QUrl& other)
{
    return one.scheme() == other.scheme() && one.host() == other.host()
        && one.port(usual_port(one)) == other.port(usual_port(other));
}

} // namespace tarn
