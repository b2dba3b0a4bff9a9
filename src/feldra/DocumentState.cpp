#include "feldra/DocumentState.h"

#include <algorithm>

namespace feldra {

int DocumentState::OperationId(OperationData& operation)
{
    if (operation.id == 0) {
        int highest = 0;
        for (const auto& other : data.operations)
            highest = std::max(highest, other->id);
        operation.id = highest + 1;
    }
    return operation.id;
}

std::shared_ptr<OperationData> DocumentState::OperationById(int id) const
{
    if (id == 0)
        return nullptr;
    auto it = std::find_if(data.operations.cbegin(), data.operations.cend(),
                           [id](const auto& operation) { return operation->id == id; });
    return it == data.operations.cend() ? nullptr : *it;
}

std::shared_ptr<FeatureData> DocumentState::Feature(const QString& key) const
{
    auto it = std::find_if(data.features.cbegin(), data.features.cend(),
                           [&key](const auto& feature) { return feature->key == key; });
    return it == data.features.cend() ? nullptr : *it;
}

QString DocumentState::NewKey(const QString& prefix) const
{
    auto taken = [this](const QString& key) {
        return Feature(key) || std::any_of(data.operations.cbegin(), data.operations.cend(),
                                           [&key](const auto& op) { return op->key == key; });
    };
    int n = 1;
    while (taken(prefix + QString::number(n)))
        ++n;
    return prefix + QString::number(n);
}

} // namespace feldra
