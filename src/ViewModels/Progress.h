// How far a long operation has come.
#pragma once

#include <QMetaType>
#include <QObject>

namespace wrapio {

struct Progress {
    Q_GADGET
    Q_PROPERTY(int current MEMBER current)
    Q_PROPERTY(int total MEMBER total)

public:
    int current = 0;  ///< steps done, from 0 to `total`
    int total = 0;

    bool operator==(const Progress&) const = default;
};

}  // namespace wrapio
