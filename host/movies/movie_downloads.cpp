#include "movie_downloads.h"

#include "core/language.h"
#include "movie_address.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

namespace tarn {

namespace {

constexpr int most_redirects = 5;
constexpr int longest_reason = 200; ///< letters
constexpr int status_found = 200;
constexpr qint64 buffer_size = 1 << 20; ///< bytes that wait to be read

QNetworkRequest plain_request(const QUrl& url)
{
    QNetworkRequest request(url);
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        request.setAttribute(attribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // What is unpacked on the way could grow beyond the limit.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setRawHeader("Accept-Language", "*"); // The user's own is nobody's business.
    request.setRawHeader("User-Agent", "tarn-studio");
    return request;
}

QString reason_of(const QNetworkReply& reply)
{
    const QString host = reply.url().host();
    switch (reply.error()) {
    case QNetworkReply::HostNotFoundError: return lang(u"找不到主机 %1。", u"The host %1 was not found.").arg(host);
    case QNetworkReply::ConnectionRefusedError:
        return lang(u"主机 %1 拒绝连接。", u"The host %1 refuses the connection.").arg(host);
    case QNetworkReply::RemoteHostClosedError:
        return lang(u"连接中断，影片不完整。", u"The connection was cut off before all of the movie had come.");
    case QNetworkReply::SslHandshakeFailedError:
        return lang(u"无法与主机 %1 建立安全连接。", u"There is no secure connection with the host %1.").arg(host);
    default:
        return lang(u"无法加载影片：%1", u"The movie cannot be loaded: %1")
            .arg(reply.errorString().left(longest_reason));
    }
}

int status_of(const QNetworkReply& reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

} // namespace

MovieDownloads::MovieDownloads() : MovieDownloads(Limits()) {}

MovieDownloads::MovieDownloads(Limits limits) : m_limits(limits) {}

MovieDownloads::~MovieDownloads()
{
    clear();
}

void MovieDownloads::load(const QString& address)
{
    if (m_downloads.contains(address))
        return;
    if (!m_network) {
        m_network = std::make_unique<QNetworkAccessManager>();
        m_network->setProxy(QNetworkProxy::NoProxy);
    }
    Download& download = m_downloads[address];
    download.stall.setSingleShot(true);
    download.stall.setInterval(m_limits.stall);
    QObject::connect(&download.stall, &QTimer::timeout, &download.stall,
                     [this, &download] { end(download, lang(u"服务器没有回应。", u"The server does not answer.")); });
    request(download, QUrl(address));
}

void MovieDownloads::request(Download& download, const QUrl& url)
{
    QNetworkReply* reply = m_network->get(plain_request(url));
    reply->setReadBufferSize(buffer_size);
    download.reply = reply;
    download.stall.start();
    QObject::connect(reply, &QNetworkReply::metaDataChanged, &download.stall,
                     [this, &download] { head_came(download); });
    QObject::connect(reply, &QNetworkReply::readyRead, &download.stall, [this, &download] { body_came(download); });
    QObject::connect(reply, &QNetworkReply::finished, &download.stall, [this, &download] { finished(download); });
}

void MovieDownloads::head_came(Download& download)
{
    download.stall.start();
    if (download.reply->attribute(QNetworkRequest::RedirectionTargetAttribute).isValid())
        return redirected(download);
    if (status_of(*download.reply) != status_found)
        return end(download, lang(u"服务器回应：%1。", u"The server answers %1.").arg(status_of(*download.reply)));
    if (download.reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_limits.bytes)
        end(download, too_large());
}

void MovieDownloads::redirected(Download& download)
{
    const QUrl from = download.reply->url();
    const QUrl to = from.resolved(download.reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl());
    const auto target = movie_address(to.toString(QUrl::FullyEncoded));
    if (!target || !is_same_server(from, QUrl(target.value())))
        return end(download,
                   lang(u"该网址转到另一个服务器，未加载：%1",
                        u"The address leads to another server, which was not followed: %1")
                       .arg(to.toString(QUrl::FullyEncoded | QUrl::RemoveUserInfo).left(longest_movie_address)));
    if (++download.redirects > most_redirects)
        return end(download, lang(u"该网址转向次数过多。", u"The address leads on too often."));
    leave_later(download);
    request(download, QUrl(target.value()));
}

void MovieDownloads::body_came(Download& download)
{
    download.stall.start();
    download.content += download.reply->readAll();
    if (download.content.size() > m_limits.bytes)
        end(download, too_large());
}

void MovieDownloads::finished(Download& download)
{
    const QNetworkReply& reply = *download.reply;
    if (reply.error() != QNetworkReply::NoError || status_of(reply) != status_found)
        return end(download, reason_of(reply));
    body_came(download);
    if (download.reply)
        end(download, {});
}

void MovieDownloads::end(Download& download, const QString& failure)
{
    download.stall.stop();
    download.failure = failure;
    if (!failure.isEmpty())
        download.content = {};
    else if (download.content.isNull())
        download.content = "";
    leave_later(download);
    if (on_changed)
        on_changed();
}

/// Nothing is heard of its request any more; the answer is to be deleted, which ends it.
QNetworkReply* MovieDownloads::leave(Download& download)
{
    if (download.reply)
        QObject::disconnect(download.reply, nullptr, &download.stall, nullptr);
    return std::exchange(download.reply, nullptr);
}

/// From within what it says.
void MovieDownloads::leave_later(Download& download)
{
    if (QNetworkReply* reply = leave(download))
        reply->deleteLater();
}

QString MovieDownloads::too_large() const
{
    return lang(u"影片过大（最大 %1 MB）。", u"The movie is too large (at most %1 MB).").arg(m_limits.bytes >> 20);
}

void MovieDownloads::drop(const QString& address)
{
    const auto found = m_downloads.find(address);
    if (found == m_downloads.end())
        return;
    delete leave(found->second);
    m_downloads.erase(found);
}

void MovieDownloads::clear()
{
    for (auto& [address, download] : m_downloads)
        delete leave(download);
    m_downloads.clear();
    if (m_network)
        m_network->clearAccessCache(); // No connection stays open.
}

QByteArray MovieDownloads::file(const QString& address) const
{
    const auto found = m_downloads.find(address);
    return found == m_downloads.end() || found->second.reply ? QByteArray() : found->second.content;
}

QString MovieDownloads::failure(const QString& address) const
{
    const auto found = m_downloads.find(address);
    return found == m_downloads.end() ? QString() : found->second.failure;
}

} // namespace tarn
