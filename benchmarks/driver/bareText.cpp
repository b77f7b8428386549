#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPlainTextEdit>

// The least that shows a reply while it comes: a text field to which each token is added as it is. Where
// OSTRELIN_ENGINE_URL is set, it asks that engine at the start.

using namespace Qt::StringLiterals;

namespace {

QString tokenOf(const QByteArray &line) {
    const QJsonObject event = QJsonDocument::fromJson(line.mid(line.indexOf('{'))).object();
    return event[u"choices"_s][0][u"delta"_s][u"content"_s].toString();
}

void show(QIODevice &reply, QPlainTextEdit &text) {
    while (reply.canReadLine()) {
        text.moveCursor(QTextCursor::End);
        text.insertPlainText(tokenOf(reply.readLine()));
    }
}

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QPlainTextEdit text;
    text.resize(1100, 760);
    text.show();
    QNetworkAccessManager network;
    if (const QString engine = qEnvironmentVariable("OSTRELIN_ENGINE_URL"); !engine.isEmpty()) {
        QNetworkRequest request(QUrl(engine + u"/v1/chat/completions"_s));
        request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
        QNetworkReply *const reply = network.post(request, "{}");
        QObject::connect(reply, &QIODevice::readyRead, &text, [&text, reply] { show(*reply, text); });
    }
    return QApplication::exec();
}
