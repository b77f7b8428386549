#pragma once

#include "screens/Banner.h"
#include "screens/ChatScreenModel.h"

class WordButton;

/// The banners over the chat, one below another. It isn't there while there is none.
class BannerColumn : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit BannerColumn(const Look &look, QWidget *parent = nullptr);

    void setModel(const ChatScreenModel &model);

Q_SIGNALS:
    void upgradeAccepted();
    void upgradeDismissed();
    void updateDismissed();
    /// The person wants the engine to be started anew.
    void engineRetried();

private:
    using Text = QString ChatScreenModel::*;

    Banner *add(Banner::Tone tone, Text text);

    const Look &m_look;
    QList<std::pair<Banner *, Text>> m_banners;
    WordButton *m_updateDownload;
    QUrl m_updateURL;
};
