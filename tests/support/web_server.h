#pragma once

#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>

namespace tarn::test {

/// A server on this machine that answers every request as a test says, and keeps what was asked.
class WebServer {
public:
    using Answer = std::function<void(QTcpSocket&, const QByteArray& request)>;

    explicit WebServer(Answer answer) : m_answer(std::move(answer))
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            while (QTcpSocket* socket = m_server.nextPendingConnection())
                QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                    const QByteArray request = socket->readAll();
                    requests << request;
                    m_answer(*socket, request);
                });
        });
    }

    QString address(const QString& path = QStringLiteral("/movie.swf")) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path);
    }
    /// The path of the i-th request.
    QByteArray path(int i) const { return requests.value(i).split(' ').value(1); }
    /// Connections that are open.
    qsizetype open() const { return m_server.findChildren<QTcpSocket*>().size() - closed(); }

    /// A whole answer with that body.
    static QByteArray found(const QByteArray& body, const QByteArray& more = {})
    {
        return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" + more + "\r\n" + body;
    }
    static QByteArray redirect(const QString& to)
    {
        return "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + to.toUtf8() + "\r\n\r\n";
    }

    QByteArrayList requests;

private:
    qsizetype closed() const
    {
        qsizetype count = 0;
        for (const QTcpSocket* socket : m_server.findChildren<QTcpSocket*>())
            count += socket->state() == QAbstractSocket::UnconnectedState;
        return count;
    }

    Answer m_answer;
    QTcpServer m_server;
};

} // namespace tarn::test
