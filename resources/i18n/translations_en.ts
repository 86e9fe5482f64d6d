<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgTranslations</name>
    <message>
        <source>预览语言</source>
        <translation>Preview in</translation>
    </message>
    <message>
        <source>添加语言...</source>
        <translation>Add Language...</translation>
    </message>
    <message>
        <source>删除语言</source>
        <translation>Remove Language</translation>
    </message>
    <message>
        <source>导入...</source>
        <translation>Import...</translation>
    </message>
    <message>
        <source>导出...</source>
        <translation>Export...</translation>
    </message>
</context>
</TS>
