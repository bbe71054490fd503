#pragma once

#include <QObject>
#include <QTimer>

namespace vellmoor {

class CleanerStore;

/// Gives back to the system what a scan or a clean has used: the allocator keeps what is free, for each thread apart.
class SpareMemory : public QObject {
public:
    explicit SpareMemory(CleanerStore& store);

private:
    QTimer later_;
};

} // namespace vellmoor
