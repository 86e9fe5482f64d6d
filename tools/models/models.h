#pragma once

#include <QByteArray>

/// The sample models, as files. They are as large as what they show (metres), stand on the ground and look along z.

QByteArray make_figure(); ///< a walker with a skeleton; actions "walk" and "wave"
QByteArray make_chest();  ///< its lid is a node of its own; actions "open" and "close"
QByteArray make_tree();
QByteArray make_crate(); ///< with a picture and a normal map
