// A label whose font and colour follow from its role and the desktop's font and palette. Its text is plain
// and wraps.
//
// Threads: the main thread.
#pragma once

#include <QLabel>

#pragma GCC visibility push(default)

class TextLabel final : public QLabel {
    Q_OBJECT
    Q_PROPERTY(Role role READ role WRITE setRole)
public:
    enum class Role { body, title, note };
    Q_ENUM(Role)

    explicit TextLabel(QWidget *parent = nullptr);

    Role role() const { return role_; }
    void setRole(Role role);

    /// Shows the text, or hides the label for an empty one.
    void showText(const QString &text);

protected:
    void changeEvent(QEvent *event) override;

private:
    void dress();

    Role role_ = Role::body;
};

#pragma GCC visibility pop
