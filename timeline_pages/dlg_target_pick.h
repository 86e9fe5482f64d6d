#pragma once

#include <QDialog>

#include <optional>

class CGuiPlugScene;
class CTimerObject;

/// The modal dialog in which a timer object gets another target: the objects of its kind that its timebar does not animate
/// yet, by their names.
class CDlgTargetPick : public QDialog {
    Q_OBJECT

public:
    /// The id of the chosen object; no answer when it was cancelled.
    static std::optional<quint32> pick(QWidget* parent, const CGuiPlugScene& scene, const CTimerObject& object);

private:
    class Page;

    CDlgTargetPick(const CGuiPlugScene& scene, const CTimerObject& object);

    Page* m_page;
};
