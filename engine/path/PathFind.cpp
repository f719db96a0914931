#include "path/PathFind.h"

#include "world/Object.h"

namespace sv {

void PathFindDeleter::operator()(PathFind *p_path_find) const {
    delete p_path_find;
}

} // namespace sv
