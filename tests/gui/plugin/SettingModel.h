#pragma once
// What the two limit pages and their store do, as rules over plain values.

#include <QByteArray>
#include <QDate>
#include <QMap>
#include <QString>
#include <QStringList>

class SettingModel
{
public:
    enum Page { Operator, Settings, PageCount };

    struct Control
    {
        QString value; //!< "on" or "off", an entry's number, a size, or a date as ISO text
        bool isEnabled = true;

        bool operator==(const Control &other) const
        {
            return value == other.value && isEnabled == other.isEnabled;
        }
    };
    //! By the end of the object name, behind "NetInfoSettingDlg_".
    using Controls = QMap<QString, Control>;

    //! \a store has the seventeen texts that are in memory; there is no file yet and no page.
    explicit SettingModel(const QStringList &store);

    //! Which rows the settings page has when it is built the next time.
    void setLimitRows(bool data, bool time);
    //! Builds and loads \a page.
    void build(Page page);
    //! Loads the stored values: on the settings page this is Cancel.
    void load(Page page);
    //! The page has died.
    void drop(Page page);
    //! Another part of the program stores \a value in memory.
    void store(int index, const QString &value);

    // What the user does; a control that is disabled takes nothing.
    void click(Page page, const QString &name);
    void type(Page page, const QString &name, const QString &text);
    void choose(Page page, const QString &name, int entry);
    void chooseDate(QDate date);
    //! OK on the settings page, Save on the operator page. False: refused.
    [[nodiscard]] bool save(Page page);

    //! Empty while there is no such page.
    [[nodiscard]] const Controls &controls(Page page) const;
    [[nodiscard]] const QStringList &stored() const;
    //! Null while there is none.
    [[nodiscard]] QByteArray file() const;

    //! How many entries a combo box has.
    [[nodiscard]] static int entries(Page page, const QString &name);
    //! How many digits a size may have.
    [[nodiscard]] static int digits(const QString &name);

private:
    [[nodiscard]] bool isOn(Page page, const QString &name) const;
    [[nodiscard]] bool isTrue(int index) const;
    void setOn(Page page, const QString &name, bool on);
    void enable(Page page, const QString &name, bool enabled);
    void selectRadio(Page page, int radio);
    void setRecurring(bool on);
    void clickLimit(Page page, const QString &name);
    void loadEntry(Page page, const QString &name, int index);
    void loadDate();
    void loadLimit(Page page, const char *checkBox, const char *size, int index);
    [[nodiscard]] bool storeLimit(Page page, const char *checkBox, const char *size, int index);
    void storeChosen(Page page);
    void writeFile();

    QStringList m_store;
    QByteArray m_file;
    Controls m_controls[PageCount];
    QMap<QString, QString> m_chosen[PageCount]; // what a save stores, by control
    bool m_hasData = true;
    bool m_hasTime = true;
};
