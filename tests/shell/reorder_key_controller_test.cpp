// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "shell/reorder_key_controller.h"
#include "support/fake_modifier_keys.h"
#include "support/test_case.h"

namespace wrenfold {

class ReorderKeyControllerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theFlagFollowsTheControlKey()
    {
        StoreOnFakes fakes{TaskList{}};
        FakeModifierKeys keys;
        ReorderKeyController controller(fakes.store, keys);
        keys.setControl(true);
        QVERIFY(!fakes.store.isReorderKeyPressed.value()); // Not yet installed.
        controller.install();
        QVERIFY(fakes.store.isReorderKeyPressed.value());
        keys.setControl(false);
        QVERIFY(!fakes.store.isReorderKeyPressed.value());
    }

    void theKeyIsNothingToTheDocument()
    {
        StoreOnFakes fakes{TaskList{}};
        FakeModifierKeys keys;
        ReorderKeyController controller(fakes.store, keys);
        controller.install();
        const int writes = fakes.preferences.writeCount();
        keys.setControl(true);
        keys.setControl(false);
        QCOMPARE(fakes.preferences.writeCount(), writes);
    }

    void onceItHasGoneNobodyListens()
    {
        StoreOnFakes fakes{TaskList{}};
        FakeModifierKeys keys;
        {
            ReorderKeyController controller(fakes.store, keys);
            controller.install();
            QVERIFY(keys.isWatched());
        }
        QVERIFY(!keys.isWatched());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::ReorderKeyControllerTest)
#include "reorder_key_controller_test.moc"
