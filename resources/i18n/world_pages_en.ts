<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgWorld</name>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>再制</source>
        <translation>Duplicate</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>查找</source>
        <translation>Find</translation>
    </message>
</context>
<context>
    <name>CDlgPropWorld</name>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>位置</source>
        <translation>Place</translation>
    </message>
    <message>
        <source>旋转</source>
        <translation>Turn</translation>
    </message>
    <message>
        <source>缩放</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>颜色</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>透明度</source>
        <translation>Transparency</translation>
    </message>
    <message>
        <source>可见</source>
        <translation>Visible</translation>
    </message>
    <message>
        <source>锁定</source>
        <translation>Locked</translation>
    </message>
    <message>
        <source>导航图热点</source>
        <translation>On maps</translation>
    </message>
    <message>
        <source>在导航图上显示物体的位置</source>
        <translation>Maps show where the object is</translation>
    </message>
    <message>
        <source>沿路径</source>
        <translation>Path</translation>
    </message>
    <message>
        <source>当前时间轴让物体跟随的路径；先记录关键帧</source>
        <translation>The path that the current timebar has the object follow; record a key first</translation>
    </message>
    <message>
        <source>沿路径运动方向</source>
        <translation>In the path&#x27;s direction</translation>
    </message>
</context>
<context>
    <name>CDlgPropWorldMoving</name>
    <message>
        <source>动作</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>动作时间（秒）</source>
        <translation>Time (s)</translation>
    </message>
    <message>
        <source>自动播放</source>
        <translation>Plays by itself</translation>
    </message>
    <message>
        <source>循环播放</source>
        <translation>Repeats</translation>
    </message>
</context>
<context>
    <name>CDlgPropWorldSkeleton</name>
    <message>
        <source>动作</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>动作时间（秒）</source>
        <translation>Time (s)</translation>
    </message>
    <message>
        <source>自动播放</source>
        <translation>Plays by itself</translation>
    </message>
    <message>
        <source>循环播放</source>
        <translation>Repeats</translation>
    </message>
</context>
<context>
    <name>CDlgPropWorldCamera</name>
    <message>
        <source>视野角度</source>
        <translation>Field of view</translation>
    </message>
    <message>
        <source>通过相机观察 / 返回</source>
        <translation>Look Through / Back</translation>
    </message>
    <message>
        <source>移到当前视图位置</source>
        <translation>Move to the View</translation>
    </message>
</context>
<context>
    <name>CDlgPropWorldPath</name>
    <message>
        <source>闭合</source>
        <translation>Closed</translation>
    </message>
    <message>
        <source>平滑曲线</source>
        <translation>Smooth</translation>
    </message>
    <message>
        <source>在视图中拖动路径的点；双击路径添加点，双击点删除它。</source>
        <translation>Drag the points in the view; a double-click on the path adds one, on a point removes it.</translation>
    </message>
</context>
<context>
    <name>CDlgPropWorldPanel</name>
    <message>
        <source>宽度（米）</source>
        <translation>Width (m)</translation>
    </message>
    <message>
        <source>高度（米）</source>
        <translation>Height (m)</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>选择图片</source>
        <translation>Choose a picture</translation>
    </message>
    <message>
        <source>清除图片</source>
        <translation>Clear the picture</translation>
    </message>
    <message>
        <source>按图片比例调整宽度</source>
        <translation>Width in Picture&#x27;s Ratio</translation>
    </message>
</context>
</TS>
