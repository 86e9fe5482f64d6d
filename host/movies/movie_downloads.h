#pragma once

#include "movie_orders.h"

#include <QByteArray>
#include <QString>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;
class QUrl;

namespace tarn {

/// Loads movies from the network, each once. An address goes out as a plain request: without cookies, names or passwords,
/// and through no proxy. Who asks for one sees to it that it may be loaded.
class MovieDownloads {
public:
    struct Limits {
        qint64 bytes = largest_movie;
        int stall = 30000; ///< milliseconds without anything new
    };

    MovieDownloads();
    explicit MovieDownloads(Limits limits);
    ~MovieDownloads();
    MovieDownloads(const MovieDownloads&) = delete;
    MovieDownloads& operator=(const MovieDownloads&) = delete;

    /// The file or the failure is there. Called from the event loop.
    std::function<void()> on_changed;

    /// Begins to load it, unless that was begun before. `address` is what movie_address() wrote.
    void load(const QString& address);
    /// Ends what is under way, and forgets what came.
    void drop(const QString& address);
    void clear();

    /// The bytes of the file; null while they are not all there.
    QByteArray file(const QString& address) const;
    /// Why they do not come; empty while nothing is known against it.
    QString failure(const QString& address) const;

private:
    struct Download {
        QNetworkReply* reply = nullptr; ///< null when it is over
        QTimer stall;
        QByteArray content;
        QString failure;
        int redirects = 0;
    };

    void request(Download& download, const QUrl& url);
    void head_came(Download& download);
    void body_came(Download& download);
    void redirected(Download& download);
    void finished(Download& download);
    void end(Download& download, const QString& failure);
    static QNetworkReply* leave(Download& download);
    static void leave_later(Download& download);
    QString too_large() const;

    Limits m_limits;
    std::unique_ptr<QNetworkAccessManager> m_network; ///< null before the first
    std::map<QString, Download> m_downloads;          ///< by address
};

} // namespace tarn
