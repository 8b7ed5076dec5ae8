#include "core/mFunctionList.h"

#include "toolkit/ListView.h"

void BarvaPolozky(ListView& list, const QString& key, quint32 colour) {
    list.item(key).setForeColor(colour);
}
