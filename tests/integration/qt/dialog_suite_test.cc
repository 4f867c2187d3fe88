#include "integration/qt/QtTest.h"
#include "support/DialogSuite.h"

namespace {

const auto* const application = ::testing::AddGlobalTestEnvironment(new qttest::Application);

class QtKind {
  public:
    static constexpr const char* name = "CQtDialog";

    CWnd& window() { return m_dialog; }
    std::function<void(CDataExchange*)>& exchange() { return m_dialog.exchange; }
    void addEdit(int id) { m_dialog.AddEdit(id, "Feld"); }
    void addCheck(int id, bool threeState) { m_dialog.AddCheck(id, "Haken", threeState ? TRUE : FALSE); }
    void limitText(int id, int most) { m_dialog.SetTextLimit(id, most); }
    void type(int id, const std::string& text) { qttest::type(m_dialog, id, qttest::fromCp1252(text)); }
    std::string shown(int id) { return qttest::toCp1252(qttest::edit(m_dialog, id).displayText()); }
    void tick(int id, int state) {
        for (int clicks = 0; ticked(id) != state && clicks < 3; ++clicks)
            QTest::keyClick(&qttest::box(m_dialog, id), Qt::Key_Space);
        ASSERT_EQ(ticked(id), state);
    }
    int ticked(int id) {
        switch (qttest::box(m_dialog, id).checkState()) {
            case Qt::Unchecked:
                return 0;
            case Qt::Checked:
                return 1;
            case Qt::PartiallyChecked:
                break;
        }
        return 2;
    }
    int focused() {
        const QWidget* const widget = m_dialog.GetDialog()->focusWidget();
        for (const int id :
             {dialogtest::kEdit, dialogtest::kOther, dialogtest::kBox, dialogtest::kThreeStates}) {
            if (m_dialog.GetDlgItem(id) != nullptr && m_dialog.GetWidget(id) == widget) return id;
        }
        return 0;
    }

  private:
    dialogtest::Scripted<CQtDialog> m_dialog{name};
};

}  // namespace

namespace dialogtest {

using QtSubjects = Subjects<QtKind>;
INSTANTIATE_TYPED_TEST_SUITE_P(QtDialog, EditOf, QtSubjects, SubjectNames);
INSTANTIATE_TYPED_TEST_SUITE_P(QtDialog, CheckBoxIn, QtKind);

}  // namespace dialogtest
