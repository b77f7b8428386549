#include "screens/BannerColumn.h"

#include "screens/Style.h"
#include "screens/WordButton.h"

#include <QDesktopServices>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

BannerColumn::BannerColumn(const Look &look, QWidget *parent) : QWidget(parent), m_look(look) {
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, style::space, 0, 0);
    column->setSpacing(style::spaceSmall);
    add(Banner::Tone::remark, &ChatScreenModel::moveHint);
    Banner *upgrade = add(Banner::Tone::offer, &ChatScreenModel::upgradeOffer);
    Banner *update = add(Banner::Tone::offer, &ChatScreenModel::updateNotice);
    add(Banner::Tone::problem, &ChatScreenModel::memoryWarning);
    Banner *engine = add(Banner::Tone::problem, &ChatScreenModel::engineFailure);
    connect(upgrade->addButton(u"Download"_s), &WordButton::clicked, this, &BannerColumn::upgradeAccepted);
    connect(upgrade->addButton(u"Not now"_s), &WordButton::clicked, this, &BannerColumn::upgradeDismissed);
    m_updateDownload = update->addButton(u"Download"_s);
    connect(m_updateDownload, &WordButton::clicked, this, [this] { QDesktopServices::openUrl(m_updateURL); });
    connect(update->addButton(u"Not now"_s), &WordButton::clicked, this, &BannerColumn::updateDismissed);
    connect(engine->addButton(u"Try again"_s), &WordButton::clicked, this, &BannerColumn::engineRetried);
}

Banner *BannerColumn::add(Banner::Tone tone, Text text) {
    auto *banner = new Banner(m_look, tone, this);
    layout()->addWidget(banner);
    m_banners.append({banner, text});
    return banner;
}

void BannerColumn::setModel(const ChatScreenModel &model) {
    bool hasText = false;
    for (const auto &[banner, text] : m_banners) {
        banner->setText(model.*text);
        hasText = hasText || !(model.*text).isEmpty();
    }
    setVisible(hasText);
    m_updateURL = model.updateURL;
    m_updateDownload->setVisible(!m_updateURL.isEmpty());
}
