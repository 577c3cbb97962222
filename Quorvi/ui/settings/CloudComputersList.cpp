#include "Quorvi/ui/settings/CloudComputersList.h"

#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Moment.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/Card.h"
#include "Quorvi/ui/widgets/Confirmation.h"

namespace quorvi {

namespace {

constexpr int shortId = 8;

}  // namespace

CloudComputersList::CloudComputersList(CloudAccess& cloud, Scheduler& scheduler)
    : cloud_(cloud),
      rows_(new QWidget),
      name_(new QLineEdit),
      rename_(button(tr("Rename"))),
      problem_(bodyText()),
      tasks_(scheduler) {
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    all->setSpacing(spacing::medium);
    all->addWidget(divider());
    all->addWidget(bodyText(tr("Computers that share this folder")));
    auto* rows = new QVBoxLayout(rows_);
    rows->setContentsMargins({});
    rows->setSpacing(spacing::medium);
    all->addWidget(rows_);
    name_->setAccessibleName(tr("Name of this computer"));
    name_->setPlaceholderText(tr("Name of this computer"));
    rename_->setAccessibleName(tr("Rename this computer"));
    all->addLayout(row({name_, rename_}));
    all->addWidget(problem_);
    problem_->hide();
    const auto rename = [this] {
        tasks_.start([this](std::stop_token stop) {
            return this->rename(name_->text().trimmed().toStdString(), std::move(stop));
        });
    };
    connect(rename_, &QPushButton::clicked, this, rename);
    connect(name_, &QLineEdit::returnPressed, this, rename);
    hide();
}

void CloudComputersList::refresh() {
    reading_.cancel();
    reading_ = tasks_.start([this](std::stop_token stop) { return read(std::move(stop)); });
}

Task<void> CloudComputersList::read(std::stop_token stop) {
    auto reading = cloud_.computers(std::move(stop));
    const auto computers = co_await reading;
    show(computers);
}

Task<void> CloudComputersList::rename(std::string name, std::stop_token stop) {
    auto naming = cloud_.nameThisComputer(std::move(name), std::move(stop));
    co_await naming;
    name_->clear();
    refresh();
}

Task<void> CloudComputersList::remove(std::string id, std::stop_token stop) {
    auto removing = cloud_.removeComputer(std::move(id), std::move(stop));
    const auto problem = co_await removing;
    problem_->setVisible(problem.has_value());
    if (problem) problem_->setText(quorvi::shown(*problem));
    refresh();
}

void CloudComputersList::show(const std::vector<CloudComputer>& computers) {
    setVisible(!computers.empty());
    if (computers == shown_) return;
    shown_ = computers;
    const bool hadFocus = rows_->isAncestorOf(window()->focusWidget());
    while (auto* item = rows_->layout()->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (const auto& each : computers) addRow(each);
    if (hadFocus) name_->setFocus();
    const auto own = std::ranges::find(computers, true, &CloudComputer::isThis);
    name_->setEnabled(own != computers.end());
    rename_->setEnabled(own != computers.end());
}

void CloudComputersList::addRow(const CloudComputer& computer) {
    const auto name = computer.name.empty() ? qt(computer.id).left(shortId) : qt(computer.name);
    auto* line = new QWidget;
    auto* text = bodyText(computer.isThis ? tr("%1 (this computer)").arg(name) : name);
    auto* time = captionText(tr("Last change %1").arg(moment(computer.lastChange)));
    auto* both = new QVBoxLayout;
    both->setSpacing(spacing::tiny);
    both->addWidget(text);
    both->addWidget(time);
    auto* all = new QHBoxLayout(line);
    all->setContentsMargins({});
    all->addLayout(both, 1);
    if (!computer.isThis) {
        auto* remove = button(tr("Remove…"));
        remove->setAccessibleName(tr("Remove %1").arg(name));
        connect(remove, &QPushButton::clicked, this, [this, computer] { askToRemove(computer); });
        all->addWidget(remove);
    }
    rows_->layout()->addWidget(line);
}

void CloudComputersList::askToRemove(const CloudComputer& computer) {
    const auto name = computer.name.empty() ? qt(computer.id).left(shortId) : qt(computer.name);
    ask(this,
        {.title = tr("Remove %1?").arg(name),
         .message = tr("Only for a computer that you no longer have or that no longer uses "
                       "this folder: its files are deleted. Nothing that only it had is lost."),
         .destroy = tr("Remove"),
         .onDestroy = [this, id = computer.id] {
             tasks_.start([this, id](std::stop_token stop) { return remove(id, std::move(stop)); });
         }});
}

}  // namespace quorvi
