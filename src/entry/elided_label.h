#pragma once

#include <QtWidgets/QLabel>

/// A label for a text of any length: plain, on one line, elided when it does not fit and then shown whole in
/// a tool tip.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString shownText() const;
};
