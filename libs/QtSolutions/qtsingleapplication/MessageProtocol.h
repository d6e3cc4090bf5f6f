// SPDX-License-Identifier: Apache-2.0
// What goes over the socket between two instances of an application.
//
// The sender writes one frame: four fixed bytes, the length of the text as four bytes (highest first), the text in
// UTF-8. The receiver answers with four fixed bytes once it has the whole frame, and closes the connection.

#pragma once

#include <QByteArray>

class QLocalSocket;

/// The longest text of a message, in bytes of UTF-8.
constexpr int longestMessage = 1024 * 1024;

/// The bytes before the text.
constexpr int frameHeaderSize = 8;

/// What a frame starts with.
const QByteArray& frameStart();

/// The answer to a complete frame.
const QByteArray& frameAnswer();

/// The frame of a text of at most `longestMessage` bytes.
QByteArray makeFrame(const QByteArray& text);

/// The length of the text that a frame's header announces, or -1 when these are not the first
/// `frameHeaderSize` bytes of a frame of ours or the text is too long.
int announcedLength(const QByteArray& header);

/// Whether the process at the other end belongs to the user of this one.
bool isOfThisUser(const QLocalSocket& socket);
