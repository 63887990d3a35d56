#pragma once

#include <QtWidgets/QDateEdit>

/// The date picker: always a date, 1601 to 9999, shown `dd/MM/yyyy` with a calendar that drops down on a
/// click on its arrow, F4 or Alt+Down. Arabic-Indic digits are taken as ASCII ones. The date stands at the
/// side where the language begins, and is typed from its day on.
class DatePicker : public QDateEdit
{
    Q_OBJECT

public:
    explicit DatePicker(QWidget *parent = nullptr);

    /// Midnight of the shown day, in the form that platform/runtime/dates.h describes; with the time of the
    /// value that was set last as long as the day stays the same.
    QDateTime value() const;
    void setValue(const QDateTime &value);

Q_SIGNALS:
    void closeUp(); ///< its calendar was closed; the box shows the picked date already

protected:
    QValidator::State validate(QString &input, int &position) const override;
    void focusInEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void dropDown();
    void speakSessionLanguage();

    QDateTime m_set;
    bool m_entered = false; ///< has had the focus
};
