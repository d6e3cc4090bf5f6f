// SPDX-License-Identifier: Apache-2.0
// Shows the edges.

#pragma once

#include "EdgeFilter.h"

#include <QWidget>

/// The main area: the edges as large as the room allows, or a message while there are none.
///
/// Ownership: borrows the picture that it shows.
/// Thread: GUI thread.
class EdgeView : public QWidget
{
public:
    /// Shows `picture`, which must stay where it is from now on. Call update() when it has changed.
    explicit EdgeView(const EdgePicture& picture);

    /// What is shown as long as the picture is empty.
    void setMessage(const QString& message);

    /// Dark edges on a light ground instead of the other way about.
    void setDarkOnLight(bool darkOnLight);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintPicture(QPainter& painter) const;

    const EdgePicture& _picture;
    QString _message;
    bool _darkOnLight = false;
};
