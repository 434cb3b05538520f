// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A message that was typed by hand. It is sent as HTML, like every message.
#pragma once

#include <QString>

// Whether a message was typed: it contains no HTML page.
bool isTypedText(const QString& message);

// Escapes each "<" that begins no HTML tag and each "&" that begins no entity. Only complete tags
// of the usual formatting elements count, so that "<Sunday>", "<mark>" and "a <b c" are text.
QString typedTextAsHtml(const QString& message);

// The plain text alternative: the text as it was typed, without the "<BR>" that an earlier try to
// send it has left at its line ends.
QString typedTextAsPlain(const QString& typed);
