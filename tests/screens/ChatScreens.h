#pragma once

#include "screens/AppFixture.h"

struct PageDocument;

/// The chat in every state worth seeing. Each function gives a widget of its own.
class ChatScreens : public AppFixture {
protected:
    ChatScreens();

    QWidget *banners();

    /// Somebody reads further up while a reply is written: the way back, a notice, and the dot in the
    /// sidebar.
    QWidget *scrolledUp();

    /// A search with what it found, a page, one that failed, and one card of each kind.
    QWidget *cards();

    /// A reply with what the model thought, under the pointer, and one that is still thought about.
    QWidget *chat();

    /// A reply with every figure.
    QWidget *figures();

    /// Half of everything: the speed, the thinking, and files with short and long names.
    QWidget *composer();

    QWidget *attachments();

    /// The last of the saved chats is the open one.
    QWidget *sidebar();

    QWidget *renaming();

    /// A reply that asks whether it may search for that, or make a page where nothing is to be searched for.
    QWidget *asking(const std::optional<QString> &query);

    /// The panel of a page beside the chat, and the sidebar.
    QWidget *withPage();

    static PageDocument page(const QString &title, int minutes);

    const QString failure = QStringLiteral("The engine ended before it was ready.\nllama_model_load: error "
                                           "loading model: tensor 'blk.12' is not "
                                           "within the file bounds; the model is damaged or incomplete.");
    StillLook look;
};
