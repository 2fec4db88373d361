// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QXmlStreamReader>

#include "derivation/document_html.h"
#include "derivation/document_sample.h"

namespace qmx::test {
namespace {

TEST(DocumentHtmlAsXml, IsWellFormedInEveryForm) {
  for (const NumberForm form : kAllForms) {
    Document document = EverythingDocument();
    document.blocks.emplace_back(Sentence({Words{"<b> & \"quoted\" ]]> \x02 é"}}));
    document.blocks.emplace_back(Formula({ShownOf(0, 0, {})}));
    QXmlStreamReader reader(QByteArray::fromStdString(HtmlText(document, form)));
    int tables = 0;
    while (!reader.atEnd()) {
      if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == u"table")
        ++tables;
    }
    EXPECT_FALSE(reader.hasError())
        << reader.errorString().toStdString() << " in line " << reader.lineNumber();
    EXPECT_EQ(tables, 4);
  }
}

}  // namespace
}  // namespace qmx::test
