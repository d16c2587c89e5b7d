// Translates menus.
#pragma once

class QWidget;

/// Translates the titles of a menu (a QMenuBar or a QMenu) and of all its items, submenus included. An item
/// that carries a submenu gets its text through the submenu's title. Nothing but titles changes. Null is
/// ignored.
void localizeMenu(QWidget *menu);
