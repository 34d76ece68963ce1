#include "foundation/image/edgelet.h"

gmArchive& operator||(gmArchive& archive, gmEdgelet& edgelet) {
    gmVector<2> position = edgelet.position();
    unsigned short magnitude = edgelet.magnitude();
    unsigned char angle = edgelet.angle().value();
    archive || position || magnitude || angle;
    edgelet = gmEdgelet(position, magnitude, gmAngle8(angle));
    return archive;
}
