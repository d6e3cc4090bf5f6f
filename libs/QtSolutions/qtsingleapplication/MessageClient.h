// SPDX-License-Identifier: Apache-2.0
// The sending side between two instances of an application.

#pragma once

class QString;

/// Sends a message to the instance that listens at `socketPath`, and waits for at most `timeout` milliseconds
/// (-1: without an end) until it has confirmed it. An instance that does not listen yet is waited for.
///
/// True when it has. False when the time is over, when the socket is another user's, or when the message is longer
/// than `longestMessage`.
bool sendInstanceMessage(const QString& socketPath, const QString& message, int timeout);

/// Whether somebody of this user listens at `socketPath`.
bool isAnswered(const QString& socketPath);
