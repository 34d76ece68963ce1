#include "foundation/object/persistent.h"

#include "tests/foundation/support.h"

namespace {

std::vector<const gmPersistent*> notified;
int valueSeen = -1;

class Value : public virtual gmPersistent {
  public:
    int value() const { return value_; }
    void value(int v) {
        reportChange();
        value_ = v;
    }

  private:
    int value_ = 0;
};

void note(const gmPersistent& object) {
    notified.push_back(&object);
    valueSeen = dynamic_cast<const Value&>(object).value();
}

class PersistentChanges : public testing::Test {
  protected:
    PersistentChanges() {
        notified.clear();
        valueSeen = -1;
        gmPersistent::changeObserver(note);
    }
    ~PersistentChanges() override { gmPersistent::changeObserver(nullptr); }
};

TEST_F(PersistentChanges, AreNotReportedUnlessAsked) {
    Value value;
    EXPECT_FALSE(value.reportsChanges());
    value.value(1);
    EXPECT_TRUE(notified.empty());
}

TEST_F(PersistentChanges, AreReportedEachTimeBeforeTheyHappen) {
    Value value;
    value.reportChanges(true);
    EXPECT_TRUE(value.reportsChanges());
    value.value(1);
    EXPECT_EQ(valueSeen, 0);
    value.value(2);
    EXPECT_EQ(valueSeen, 1);
    EXPECT_EQ(notified, (std::vector<const gmPersistent*>{&value, &value}));
}

TEST_F(PersistentChanges, StopBeingReportedOnRequest) {
    Value value;
    value.reportChanges(true);
    value.reportChanges(false);
    value.value(1);
    EXPECT_TRUE(notified.empty());
}

TEST_F(PersistentChanges, WithoutAnObserverGoUnnoticed) {
    gmPersistent::changeObserver(nullptr);
    Value value;
    value.reportChanges(true);
    value.value(1);
    EXPECT_EQ(value.value(), 1);
    EXPECT_TRUE(notified.empty());
}

TEST_F(PersistentChanges, ACopyStartsWithReportingOff) {
    Value original;
    original.reportChanges(true);
    Value copy(original);
    EXPECT_FALSE(copy.reportsChanges());
    const Value moved(std::move(copy));
    EXPECT_FALSE(moved.reportsChanges());
    EXPECT_TRUE(original.reportsChanges());
}

TEST_F(PersistentChanges, AssignmentLeavesTheTargetsSetting) {
    Value reporting;
    reporting.reportChanges(true);
    Value quiet;
    quiet = reporting;
    EXPECT_FALSE(quiet.reportsChanges());
    reporting = quiet;
    EXPECT_TRUE(reporting.reportsChanges());
}

TEST(PersistentMarks, OutsideAPassNothingIsRemembered) {
    int object = 0;
    gmPersistent::setVisited(&object, sizeof object);
    EXPECT_FALSE(gmPersistent::haveVisited(&object, sizeof object));
}

TEST(Persistent, ArchivesAVersionByteAndNothingElse) {
    gmPersistent object;
    EXPECT_EQ(support::hex(support::contentOf(object)), "00");
    support::loadFrom(support::header + '\0', [&](gmArchive& archive) { archive || object; });
    EXPECT_THROW(support::loadFrom(support::header + '\1', [&](gmArchive& archive) { archive || object; }),
                 gmArchive::UnknownVersion);
}

/// Lays its base's own answers open.
class BaseAnswers : public gmPersistent {
  public:
    bool loadsSimple(gmArchive& archive) { return loadSimple(archive); }
    void reInitialise() { reInit(); }
};

TEST(Persistent, HasNoFormWithoutAVersion) {
    BaseAnswers object;
    object.reInitialise();
    support::loadFrom(support::header, [&](gmArchive& archive) { EXPECT_FALSE(object.loadsSimple(archive)); });
}

}  // namespace
