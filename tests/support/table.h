#pragma once

#include <QTest>

#include <tuple>

/// A test's table: the data function makes one and calls it once per row, the test fetches a row's values.
template <class... Columns>
struct Table {
    using Values = std::tuple<Columns...>;

    Table() { QTest::addColumn<Values>("values"); }
    void operator()(const QByteArray& name, const Columns&... values) const
    {
        QTest::newRow(name.constData()) << Values(values...);
    }
    static Values fetch() { return *static_cast<Values*>(QTest::qData("values", qMetaTypeId<Values>())); }
};
