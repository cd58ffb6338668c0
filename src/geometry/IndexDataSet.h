#pragma once

#include "geometry/DataSet.h"
#include "geometry/DataType.h"
#include "velun_export.h"

namespace Velun {

// An index list as the renderer reads it: raw pointer, count and component type.
class VELUN_EXPORT IndexDataSet : public virtual DataSet {
public:
    ~IndexDataSet() override;

    virtual const void* getIndexList() const = 0;
    virtual unsigned int getCount() const = 0;
    virtual DataType::Type getIndexType() const = 0;
};

}  // namespace Velun
